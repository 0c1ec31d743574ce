#include "store/jet/moment.h"

#include <charconv>
#include <cstdio>

namespace jet
{
namespace
{
constexpr int SecondsOfDay = 86400;

// Takes digits off the front of the text.
std::optional<int> takeNumber(std::string_view &text, size_t least, size_t most)
{
    size_t n = 0;
    int value = 0;
    while (n < text.size() && n < most && text[n] >= '0' && text[n] <= '9')
        value = value * 10 + (text[n++] - '0');
    if (n < least)
        return std::nullopt;
    text.remove_prefix(n);
    return value;
}

bool take(std::string_view &text, char c)
{
    if (text.empty() || text.front() != c)
        return false;
    text.remove_prefix(1);
    return true;
}

std::optional<qint64> makeDay(int year, int month, int day)
{
    const QDate date(year, month, day);
    if (!date.isValid() || year < 100)
        return std::nullopt;
    return date.toJulianDay();
}

std::optional<qint64> takeIsoDay(std::string_view &text)
{
    const auto year = takeNumber(text, 4, 4);
    if (!year || !take(text, '-'))
        return std::nullopt;
    const auto month = takeNumber(text, 2, 2);
    if (!month || !take(text, '-'))
        return std::nullopt;
    const auto day = takeNumber(text, 2, 2);
    return day ? makeDay(*year, *month, *day) : std::nullopt;
}

std::optional<qint64> takeLiteralDay(std::string_view &text)
{
    const auto month = takeNumber(text, 1, 2);
    if (!month || !take(text, '/'))
        return std::nullopt;
    const auto day = takeNumber(text, 1, 2);
    if (!day || !take(text, '/'))
        return std::nullopt;
    const size_t before = text.size();
    auto year = takeNumber(text, 2, 4);
    const size_t digits = before - text.size();
    if (!year || digits == 3)
        return std::nullopt;
    if (digits == 2)
        *year += *year < 30 ? 2000 : 1900;
    return makeDay(*year, *month, *day);
}

std::optional<int> takeTime(std::string_view &text, bool secondsNeeded)
{
    const auto hour = takeNumber(text, secondsNeeded ? 2 : 1, 2);
    if (!hour || !take(text, ':'))
        return std::nullopt;
    const auto minute = takeNumber(text, 2, 2);
    if (!minute)
        return std::nullopt;
    std::optional<int> second = 0;
    if (take(text, ':'))
        second = takeNumber(text, 2, 2);
    else if (secondsNeeded)
        return std::nullopt;
    if (!second || *hour > 23 || *minute > 59 || *second > 59)
        return std::nullopt;
    return *hour * 3600 + *minute * 60 + *second;
}

qint64 floorDivide(qint64 a, qint64 b) { return a / b - (a % b < 0 ? 1 : 0); }

// Seconds since Julian day 0, which a time without a date belongs to.
qint64 secondsIn(const Moment &m)
{
    return m.day.value_or(0) * SecondsOfDay + m.second.value_or(0);
}

std::optional<Moment> valid(Moment m)
{
    static const qint64 first = QDate(100, 1, 1).toJulianDay();
    static const qint64 last = QDate(9999, 12, 31).toJulianDay();
    if (m.day && (*m.day < first || *m.day > last))
        return std::nullopt;
    return m;
}

// Parses a time that follows a date already parsed, or one without a date.
std::optional<Moment> withTime(Moment m, std::string_view text, bool fromStorage)
{
    if (m.day) {
        if (text.empty())
            return m;
        if (!take(text, ' '))
            return std::nullopt;
    }
    m.second = takeTime(text, fromStorage);
    if (!m.second || !text.empty())
        return std::nullopt;
    return m;
}
} // namespace

std::optional<Moment> momentFromStorage(std::string_view text)
{
    Moment m;
    if (text.size() >= 10) {
        m.day = takeIsoDay(text);
        if (!m.day)
            return std::nullopt;
    }
    return withTime(m, text, true);
}

std::optional<Moment> momentFromLiteral(std::string_view text)
{
    while (take(text, ' ')) {
    }
    while (!text.empty() && text.back() == ' ')
        text.remove_suffix(1);

    Moment m;
    const bool iso = text.size() > 4 && text[4] == '-';
    if (iso || text.find('/') != text.npos) {
        m.day = iso ? takeIsoDay(text) : takeLiteralDay(text);
        if (!m.day)
            return std::nullopt;
    }
    auto whole = withTime(m, text, false);
    if (whole && whole->day && whole->second == 0)
        whole->second.reset(); // midnight is stored as the date alone
    return whole;
}

std::string toStorage(const Moment &m)
{
    char text[64] = "";
    int n = 0;
    if (m.day) {
        const QDate date = QDate::fromJulianDay(*m.day);
        n = std::snprintf(text, sizeof text, "%04d-%02d-%02d", date.year(), date.month(),
                          date.day());
    }
    if (m.second)
        n += std::snprintf(text + n, sizeof text - size_t(n), "%s%02d:%02d:%02d", m.day ? " " : "",
                           *m.second / 3600, *m.second / 60 % 60, *m.second % 60);
    return {text, size_t(n)};
}

std::optional<Interval> intervalFromText(std::string_view text, bool difference)
{
    std::string low;
    for (const char c : text)
        low += c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c;
    if (low == "yyyy")
        return Interval::Year;
    if (low == "q")
        return Interval::Quarter;
    if (low == "m")
        return Interval::Month;
    if (low == "ww" || (low == "w" && difference))
        return Interval::Week;
    if (low == "d" || low == "y" || low == "w")
        return Interval::Day;
    if (low == "h")
        return Interval::Hour;
    if (low == "n")
        return Interval::Minute;
    if (low == "s")
        return Interval::Second;
    return std::nullopt;
}

std::optional<Moment> added(const Moment &m, Interval interval, qint64 count)
{
    // More than this leaves the calendar with any interval; less cannot overflow below.
    constexpr qint64 Most = 400'000'000'000;
    if (count > Most || count < -Most)
        return std::nullopt;

    int unit = 1;
    switch (interval) {
    case Interval::Year:
    case Interval::Quarter:
    case Interval::Month: {
        unit = interval == Interval::Year ? 12 : interval == Interval::Quarter ? 3 : 1;
        if (!m.day)
            return m;
        if (count > 200'000 || count < -200'000)
            return std::nullopt;
        const QDate date = QDate::fromJulianDay(*m.day).addMonths(int(count) * unit);
        return date.isValid() ? valid({date.toJulianDay(), m.second}) : std::nullopt;
    }
    case Interval::Week:
    case Interval::Day:
        if (!m.day)
            return m;
        return valid({*m.day + count * (interval == Interval::Week ? 7 : 1), m.second});
    case Interval::Hour:
        unit = 3600;
        break;
    case Interval::Minute:
        unit = 60;
        break;
    case Interval::Second:
        break;
    }
    const qint64 seconds = secondsIn(m) + count * unit;
    const qint64 day = floorDivide(seconds, SecondsOfDay);
    const int second = int(seconds - day * SecondsOfDay);
    if (!m.day)
        return Moment{std::nullopt, second};
    if (second == 0)
        return valid({day, std::nullopt});
    return valid({day, second});
}

qint64 difference(const Moment &from, const Moment &to, Interval interval)
{
    const auto months = [](const Moment &m) {
        const QDate date = QDate::fromJulianDay(m.day.value_or(0));
        return qint64(date.year()) * 12 + date.month() - 1;
    };
    const auto borders = [&](auto &&count) { return count(to) - count(from); };
    switch (interval) {
    case Interval::Year:
        return borders([&](const Moment &m) { return floorDivide(months(m), 12); });
    case Interval::Quarter:
        return borders([&](const Moment &m) { return floorDivide(months(m), 3); });
    case Interval::Month:
        return borders(months);
    case Interval::Week: // Julian day 6 was a Sunday
        return borders([](const Moment &m) { return floorDivide(m.day.value_or(0) + 1, 7); });
    case Interval::Day:
        return borders([](const Moment &m) { return m.day.value_or(0); });
    case Interval::Hour:
        return borders([](const Moment &m) { return floorDivide(secondsIn(m), 3600); });
    case Interval::Minute:
        return borders([](const Moment &m) { return floorDivide(secondsIn(m), 60); });
    case Interval::Second:
        return borders(secondsIn);
    }
    return 0;
}

} // namespace jet
