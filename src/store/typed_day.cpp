#include "store/typed_day.h"

#include "store/clock.h"

#include <QLocale>
#include <QRegularExpression>

using namespace store;
using namespace Qt::StringLiterals;

namespace
{

constexpr int FirstYear = 1900, LastYear = 2199;
constexpr int DaysLookedBack = 31; // a date a few weeks ago does not mean next year's
constexpr int ShortestWord = 2;

// Lower case without accents, the way people type the names of days in a hurry.
QString plain(const QString &text)
{
    QString letters;
    for (const QChar c : text.normalized(QString::NormalizationForm_D).toLower())
        if (c.category() != QChar::Mark_NonSpacing)
            letters += c;
    return letters;
}

QDate inRange(QDate d) { return d.year() >= FirstYear && d.year() <= LastYear ? d : QDate(); }

QDate dayNamed(const QString &word, QDate today)
{
    constexpr struct {
        const char16_t *name;
        int days;
    } near[] = {{u"hoy", 0},      {u"hoje", 0},  {u"today", 0},  {u"manana", 1},    {u"amanha", 1},
                {u"tomorrow", 1}, {u"ayer", -1}, {u"ontem", -1}, {u"yesterday", -1}};
    for (const auto &[name, days] : near)
        if (QString::fromUtf16(name).startsWith(word))
            return today.addDays(days);
    for (const QLocale &l : {QLocale(), QLocale(QLocale::Spanish), QLocale(QLocale::Portuguese),
                             QLocale(QLocale::English)})
        for (int ahead = 1; ahead <= 7; ++ahead)
            if (const QDate d = today.addDays(ahead);
                plain(l.dayName(d.dayOfWeek())).startsWith(word))
                return d;
    return {};
}

QDate fromToday(const QRegularExpressionMatch &m, QDate today)
{
    const int n = m.captured(2).toInt() * (m.captured(1) == u"-" ? -1 : 1);
    const QString unit = m.captured(3);
    return unit == u"m"                   ? today.addMonths(n)
           : unit == u"w" || unit == u"s" ? today.addDays(7 * n)
                                          : today.addDays(n);
}

QDate withoutYear(int day, int month, QDate today, Lean lean)
{
    // Several years, as February 29th exists only in some.
    const int step = lean == Lean::Ahead ? 1 : -1;
    int year = today.year();
    for (int i = 0; i < 8; ++i, year += step) {
        const QDate d(year, month, day);
        if (d.isValid() && (lean == Lean::Ahead ? d >= today.addDays(-DaysLookedBack) : d <= today))
            return d;
    }
    return {};
}

int fullYear(const QString &digits, QDate today, Lean lean)
{
    const int n = digits.toInt();
    if (digits.size() == 4)
        return n;
    const int year = today.year() / 100 * 100 + n;
    return lean == Lean::Behind && year > today.year() ? year - 100 : year;
}

// Three groups of digits, or two without the year.
QDate fromNumbers(const QStringList &groups, QDate today, Lean lean)
{
    if (groups.size() == 3 && groups[0].size() == 4) // year first, as in files
        return {groups[0].toInt(), groups[1].toInt(), groups[2].toInt()};
    const bool monthFirst = isMonthFirst();
    const int day = groups[monthFirst ? 1 : 0].toInt(), month = groups[monthFirst ? 0 : 1].toInt();
    if (groups.size() == 2)
        return withoutYear(day, month, today, lean);
    if (groups[2].size() != 2 && groups[2].size() != 4)
        return {};
    return {fullYear(groups[2], today, lean), month, day};
}

} // namespace

QDate store::readDay(const QString &text, QDate today, Lean lean)
{
    static const QRegularExpression relative(u"^([+-])\\s*(\\d{1,4})\\s*([dwsm]?)$"_s);
    static const QRegularExpression apart(
        u"^(\\d{1,4})\\s*[/\\-. ]\\s*(\\d{1,2})(?:\\s*[/\\-. ]\\s*(\\d{1,4}))?$"_s);
    static const QRegularExpression together(u"^\\d+$"_s);
    const QString t = plain(text.trimmed());
    if (const auto m = relative.match(t); m.hasMatch())
        return inRange(fromToday(m, today));
    if (const auto m = apart.match(t); m.hasMatch()) {
        QStringList groups{m.captured(1), m.captured(2)};
        if (m.hasCaptured(3))
            groups << m.captured(3);
        return inRange(fromNumbers(groups, today, lean));
    }
    if (together.match(t).hasMatch()) {
        if (t.size() <= 2)
            return QDate(today.year(), today.month(), t.toInt());
        if (t.size() != 4 && t.size() != 6 && t.size() != 8)
            return {};
        QStringList groups{t.left(2), t.mid(2, 2)};
        if (t.size() > 4)
            groups << t.mid(4);
        return inRange(fromNumbers(groups, today, lean));
    }
    return t.size() >= ShortestWord ? dayNamed(t, today) : QDate();
}
