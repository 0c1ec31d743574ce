// The session's day and clock, and how a day is written. Rules never ask the system for the date.
#pragma once

#include <QDateTime>
#include <QLocale>
#include <functional>

struct Reloj {
    /// The day that the session works on, taken once at start-up; Date() in SQL.
    QDate hoy = QDate::currentDate();
    /// The present moment. Tests replace it.
    std::function<QDateTime()> ahora = [] { return QDateTime::currentDateTime(); };

    QTime Hora() const { return ahora().time(); }
};

/// Whether days are written with the month first: the order of the locale.
inline bool MesPrimero() { return QLocale().dateFormat(QLocale::ShortFormat).startsWith(u'M'); }

/// A day as all screens show it: two digits, two digits, four digits, in the order of the locale;
/// empty for an invalid day.
inline QString TextoDeDia(QDate dia)
{
    return dia.toString(MesPrimero() ? QStringLiteral("MM/dd/yyyy") : QStringLiteral("dd/MM/yyyy"));
}
