// Days and times in the form that the files keep them.
#pragma once

#include <QDate>
#include <optional>
#include <string>
#include <string_view>

namespace jet
{

/// A day, a time of day, or a day with a time.
struct Moment {
    std::optional<qint64> day; // Julian day number
    std::optional<int> second; // of the day, 0 to 86399
};

/// Reads 'YYYY-MM-DD', 'HH:MM:SS' or both with a blank between. @return nullopt for anything else
std::optional<Moment> momentFromStorage(std::string_view text);

/// Reads what stands between the '#' of a literal: mm/dd/yy, mm/dd/yyyy or yyyy-mm-dd, hh:nn or
/// hh:nn:ss, or a day and a time. Years of two digits lie from 1930 to 2029.
/// @return nullopt for anything else, and for a day or time that does not exist
std::optional<Moment> momentFromLiteral(std::string_view text);

/// The form that the files keep. @p m holds a day or a time.
std::string toStorage(const Moment &m);

/// What DateAdd and DateDiff count in.
enum class Interval { Year, Quarter, Month, Week, Day, Hour, Minute, Second };

/// Reads "yyyy", "q", "m", "ww", "w", "d", "y", "h", "n" or "s"; @p difference tells DateDiff's
/// reading of "w" (weeks) from DateAdd's (days).
std::optional<Interval> intervalFromText(std::string_view text, bool difference);

/// DateAdd: a month that is too short gives its last day; a time alone stays within its day.
/// @return nullopt when the result lies outside the years 100 to 9999
std::optional<Moment> added(const Moment &m, Interval interval, qint64 count);

/// DateDiff: how many borders of the interval lie between both. Weeks begin on Sunday.
qint64 difference(const Moment &from, const Moment &to, Interval interval);

} // namespace jet
