#include "store/texts.h"

#include <QDir>
#include <QFile>
#include <array>
#include <stdexcept>

using namespace store;

namespace
{

constexpr std::array<QStringView, 3> Codes{u"es", u"pt", u"en"};

// Parses "..." with its escapes. @return nullopt when the quotes or an escape are wrong
std::optional<QString> betweenQuotes(QStringView t)
{
    if (t.size() < 2 || !t.startsWith(u'"') || !t.endsWith(u'"'))
        return std::nullopt;
    t = t.sliced(1, t.size() - 2);
    QString s;
    for (qsizetype i = 0; i < t.size(); ++i) {
        if (t[i] == u'"')
            return std::nullopt;
        if (t[i] != u'\\') {
            s += t[i];
            continue;
        }
        if (++i >= t.size())
            return std::nullopt;
        if (t[i] == u'n')
            s += u'\n';
        else if (t[i] == u'"' || t[i] == u'\\')
            s += t[i];
        else
            return std::nullopt;
    }
    return s;
}

bool blank(const QString &s, bool atEnd)
{
    return !s.isEmpty() && (atEnd ? s.back() : s.front()).isSpace();
}

void check(int number, const QStringList &texts, QStringList &errores)
{
    for (size_t i = 0; i < Codes.size(); ++i)
        if (texts.value(qsizetype(i)).isEmpty())
            errores << QStringLiteral("%1: no text in %2").arg(number).arg(Codes[i]);
    for (const bool atEnd : {false, true})
        for (const QString &t : texts)
            if (blank(t, atEnd) != blank(texts.front(), atEnd)) {
                errores << QStringLiteral("%1: blanks at the ends differ").arg(number);
                return;
            }
}

// The string table is split into one file for each subsystem.
QString wholeTable()
{
    QString table;
    for (const QString &name : QDir(QStringLiteral(":/strings")).entryList()) {
        QFile f(QStringLiteral(":/strings/") + name);
        if (!f.open(QIODevice::ReadOnly))
            throw std::runtime_error("the string table is missing");
        table += QString::fromUtf8(f.readAll()) + u'\n';
    }
    return table;
}

} // namespace

Language store::codeLanguage(const QString &code)
{
    if (code.startsWith(u"es", Qt::CaseInsensitive))
        return Language::Spanish;
    if (code.startsWith(u"pt", Qt::CaseInsensitive))
        return Language::Portuguese;
    return Language::English;
}

QString store::languageCode(Language language) { return Codes[size_t(language)].toString(); }

Texts::Texts(Language language) : m_language(language)
{
    QStringList errores;
    const auto all = read(wholeTable(), &errores);
    if (!errores.isEmpty())
        throw std::runtime_error("string table: " + errores.front().toStdString());
    m_texts.reserve(all.size());
    for (auto i = all.begin(); i != all.end(); ++i)
        m_texts.insert(i.key(), i.value().at(qsizetype(language)));
}

QString Texts::operator()(int number) const
{
    const auto i = m_texts.find(number);
    return i == m_texts.end() ? u'#' + QString::number(number) : *i;
}

QHash<int, QStringList> Texts::read(const QString &table, QStringList *errores)
{
    QHash<int, QStringList> all;
    int current = 0;
    const QStringList lines = table.split(u'\n');
    for (qsizetype n = 0; n < lines.size(); ++n) {
        const QStringView line = QStringView(lines[n]).trimmed();
        if (line.isEmpty() || line.startsWith(u'#'))
            continue;
        bool isNumber = false;
        const int number = line.left(line.indexOf(u' ')).toInt(&isNumber); // followed by its name
        if (isNumber) {
            if (all.contains(number))
                *errores << QStringLiteral("%1: number twice").arg(number);
            current = number;
            all[current] = QStringList{QString(), QString(), QString()};
            continue;
        }
        const auto code = std::find(Codes.begin(), Codes.end(), line.left(2));
        const auto text = betweenQuotes(line.mid(2).trimmed());
        if (current == 0 || code == Codes.end() || !text) {
            *errores << QStringLiteral("line %1 cannot be read").arg(n + 1);
            continue;
        }
        QString &place = all[current][code - Codes.begin()];
        if (!place.isEmpty())
            *errores << QStringLiteral("%1: %2 twice").arg(current).arg(*code);
        place = *text;
    }
    for (auto i = all.begin(); i != all.end(); ++i)
        check(i.key(), i.value(), *errores);
    return all;
}
