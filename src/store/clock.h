// The session's day and clock, and how a day is written. Rules never ask the system for the date.
#pragma once

#include <QDateTime>
#include <QLocale>
#include <functional>

struct Reloj {
    /// The day that the session works on, taken once at start-up; Date() in SQL.
    QDate hoy = QDate::currentDate();
    /// The present moment. Tests replace it.
    std::function<QDateTime()> now = [] { return QDateTime::currentDateTime(); };

    QTime hourOf() const { return now().time(); }
};

namespace store
{

/// Whether days are written with the month first: the order of the locale.
inline bool isMonthFirst() { return QLocale().dateFormat(QLocale::ShortFormat).startsWith(u'M'); }

/// A day as all screens show it: two digits, two digits, four digits, in the order of the locale;
/// empty for an invalid day.
inline QString dayText(QDate dia)
{
    return dia.toString(isMonthFirst() ? QStringLiteral("MM/dd/yyyy")
                                       : QStringLiteral("dd/MM/yyyy"));
}

} // namespace store
