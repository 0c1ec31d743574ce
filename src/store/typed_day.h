// Days as people type them.
#pragma once

#include <QDate>
#include <QString>

namespace store
{

/// On which side of today a day lies that is typed without its year.
enum class Lean {
    Ahead,  // appointments: today or later, but for the last few weeks
    Behind, // births: not after today
};

/// Reads a day: "12/3", "12-3-26", "1203", "12032026", "2026-03-12" in the order of the locale;
/// "12", a day of this month; "+7", "-1", "+2w", "+1m" from today on; "monday", "mo", the next one
/// after today; "today", "tomorrow", in the three languages and cut short.
/// @return an invalid day for anything else, and for years before 1900 or after 2199
QDate readDay(const QString &text, QDate today, Lean lean);

} // namespace store
