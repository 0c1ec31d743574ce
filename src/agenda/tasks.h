// The table of everything that is to be done: appointments, users' tasks, communications.
#pragma once

#include "store/session.h"

namespace agenda
{

inline constexpr int DayMinutes = 24 * 60;

/// A task to write. Empty members are stored as Null.
struct Task {
    int tip = 0;   // above 0 a service or product; below 0 one of the codes in namespace TaskKind
    int ida = 0;   // patient, client or user, as `tip` says
    QDate dia;     // day of the task; invalid for a mere communication
    QTime hor;     // ignored without a day
    QTime ala;     // alarm; ignored without a day
    int medio = 0; // how to reach its subject: a value of namespace Channel
    QDate fcreacion;
    qint64 artaux = 0; // product of a dose or food task
    QString des;
};

namespace Channel
{
inline constexpr int None = 0;
inline constexpr int Mail = 1;
inline constexpr int Letter = 2;
inline constexpr int MailOrLetter = 3;
inline constexpr int Delivery = 4; // the clinic comes to the client's home
} // namespace Channel

namespace TaskKind
{
inline constexpr int FoodShortage = -41;
inline constexpr int DoseReminder = -42;
inline constexpr int DebtReminder = -43;
inline constexpr int SettleArrears = -44;
inline constexpr int Restock = -45;
inline constexpr int Birthday = -46;
inline constexpr int Ration = -47;
inline constexpr int Appointment = -48;
inline constexpr int AppointmentReminder = -49;
inline constexpr int DiscontinuedDose = -50;
inline constexpr int FeaturedBirthday = -51;
inline constexpr int PrepaidInArrears = -70;
inline constexpr int NewClient = -71;
inline constexpr int Frequent = -72;
inline constexpr int UserTask = -100;
} // namespace TaskKind

/// A time with seconds in the locale's long format, without a time zone ("09:30:00",
/// "9:30:00 AM").
QString longHour(QTime hour);

} // namespace agenda

/// Writes a new task; the only function that adds rows. A task of today with an alarm is also added
/// to the session's alarms. A description longer than its column is cut.
/// @return the task's id
int AgregarTarea(Sesion &s, const agenda::Task &task);

/// Finds a time today for a service. Starts at 08:30 and moves on by the service's length (30
/// minutes if it has none) while there is a task within 5 minutes of the time, but by no more steps
/// than there are tasks today. A result later than 22:00 becomes 08:30.
/// On purpose: tasks of any day count as being in the way.
QTime BuscarHorarioLibre(Sesion &s, int idServicio);

/// The time of the patient's first open appointment on a day for which no reminder has gone out
/// yet; an invalid time when there is none.
QTime HoraTurnoDelDia(Sesion &s, int idm, QDate dia);

/// Closes the oldest open task of a subject that a sale or a given dose fulfils, and only that one:
/// a task of the article @p tip with the auxiliary product @p artaux, else one of the article with
/// any product. For an unknown article the auxiliary product alone decides.
/// @param ida the subject of the task
void MarcarTareaRealizada(Sesion &s, int tip, qint64 artaux, int ida);
