// The session's day and clock. Rules never ask the system for the date.
#pragma once

#include <QDateTime>
#include <functional>

struct Reloj {
    /// The day that the session works on, taken once at start-up; Date() in SQL.
    QDate hoy = QDate::currentDate();
    /// The present moment. Tests replace it.
    std::function<QDateTime()> ahora = [] { return QDateTime::currentDateTime(); };

    QTime Hora() const { return ahora().time(); }
};
