// The session's date and clock, and how a date is written. Rules never ask the system for the date.
#pragma once

#include <QDateTime>
#include <QLocale>
#include <functional>

/// The only source of date and time for the rules.
struct Reloj {
    /// The date the session works on, read once at start-up; Date() in SQL.
    QDate hoy = QDate::currentDate();
    /// The current local date and time. Tests replace it.
    std::function<QDateTime()> now = [] { return QDateTime::currentDateTime(); };

    /// The current time of day; Time() in SQL.
    QTime hourOf() const { return now().time(); }
};

namespace store
{

/// Whether the locale writes dates with the month first.
inline bool isMonthFirst() { return QLocale().dateFormat(QLocale::ShortFormat).startsWith(u'M'); }

/// A date as every screen shows it: dd/MM/yyyy, or MM/dd/yyyy where the locale puts the month
/// first. Empty for an invalid date.
inline QString dayText(QDate dia)
{
    return dia.toString(isMonthFirst() ? QStringLiteral("MM/dd/yyyy")
                                       : QStringLiteral("dd/MM/yyyy"));
}

} // namespace store
