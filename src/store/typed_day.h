// Dates as people type them.
#pragma once

#include <QDate>
#include <QString>

namespace store
{

/// On which side of today a date typed without its year lies.
enum class Lean {
    Ahead,  // appointments: in the future, or within the last few weeks
    Behind, // births: today or earlier
};

/// Parses a date as people type it:
/// - "12/3", "12-3-26", "1203", "12032026" in the locale's order of day and month; "2026-03-12"
/// - "12": that day of the current month
/// - "+7", "-1", "+2w", "+1m": days, weeks or months from today
/// - "monday", "mo": the next Monday after today; "today", "tomorrow". These words are understood
///   in all three languages and may be shortened
/// @return an invalid date for anything else, and for years before 1900 or after 2199
QDate readDay(const QString &text, QDate today, Lean lean);

} // namespace store
