// The one table of everything that is to be done on a day.
#pragma once

#include "store/session.h"

namespace agenda
{

inline constexpr int DayMinutes = 24 * 60;

/// A task to be written. What is left empty is stored as Null.
struct Task {
    int tip = 0;   // above 0 a service or product; below 0 one of the codes in namespace TaskKind
    int ida = 0;   // patient, client or user, as `tip` says
    QDate dia;     // day of the task; invalid for what is only a communication
    QTime hor;     // dropped without a day
    QTime ala;     // alarm; dropped without a day
    int medio = 0; // how its subject is reached, of namespace Medio
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

/// An hour with its seconds in the way of the locale ("09:30:00", "9:30:00 AM").
QString longHour(QTime hour);

} // namespace agenda

/// Writes a task: the only writer of new rows. A task of today with an alarm also joins the
/// session's alarms. A description longer than its column is cut.
/// @return the task's id
int AgregarTarea(Sesion &s, const agenda::Task &task);

/// A time of today for a service: from 08:30 on, moved by the service's length (30 minutes if it
/// has none) for as long as some task, of any day on purpose, stands within 5 minutes of it; one
/// step at most for each task of today. Later than 22:00 gives 08:30 again.
QTime BuscarHorarioLibre(Sesion &s, int idServicio);

/// Hour of the patient's first open appointment of a day that nobody has been told of; an invalid
/// time when there is none.
QTime HoraTurnoDelDia(Sesion &s, int idm, QDate dia);

/// Closes the oldest open task of a subject that a sale or a given dose fulfils: those of the
/// article `tip` first with, then without the auxiliary product; by the auxiliary product alone
/// when the article is unknown. The others stay open: one sale closes one task.
void MarcarTareaRealizada(Sesion &s, int tip, qint64 artaux, int ida);
