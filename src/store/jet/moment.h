// Dates and times in the form that the files store.
#pragma once

#include <QDate>
#include <optional>
#include <string>
#include <string_view>

namespace jet
{

/// A date, a time of day, or a date with a time.
struct Moment {
    std::optional<qint64> day; // Julian day number
    std::optional<int> second; // of the day, 0 to 86399
};

/// Parses 'YYYY-MM-DD', 'HH:MM:SS' or both separated by a blank. @return nullopt for anything else
std::optional<Moment> momentFromStorage(std::string_view text);

/// Parses the text between the '#' of a literal: mm/dd/yy, mm/dd/yyyy or yyyy-mm-dd, hh:nn or
/// hh:nn:ss, or a date and a time. Two-digit years mean 1930 to 2029.
/// @return nullopt for anything else, and for a date or time that does not exist
std::optional<Moment> momentFromLiteral(std::string_view text);

/// The form that momentFromStorage() parses. @p m must hold a date or a time.
std::string toStorage(const Moment &m);

/// The units of DateAdd and DateDiff.
enum class Interval { Year, Quarter, Month, Week, Day, Hour, Minute, Second };

/// Parses "yyyy", "q", "m", "ww", "w", "d", "y", "h", "n" or "s", in any letter case.
/// @param difference whether it is for DateDiff, where "w" means weeks, or DateAdd, where it means
///        days
/// @return nullopt for anything else
std::optional<Interval> intervalFromText(std::string_view text, bool difference);

/// DateAdd: in a month that is too short the result is its last day; a time without a date wraps
/// around midnight.
/// @return nullopt when the result is outside the years 100 to 9999
std::optional<Moment> added(const Moment &m, Interval interval, qint64 count);

/// DateDiff: how many boundaries of the interval lie between the two, negative if @p to is the
/// earlier one. Weeks begin on Sunday.
qint64 difference(const Moment &from, const Moment &to, Interval interval);

} // namespace jet
