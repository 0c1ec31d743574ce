// Booking appointments and the users' own tasks.
#pragma once

#include "agenda/day_list.h"

namespace agenda
{

/// What can be booked: a service, or a task of the user's own.
struct AppointmentConcept {
    int ida = 0; // the service; -100 for the user's task
    QString nom;
};
/// The services ordered by name, then the user's own task.
std::vector<AppointmentConcept> appointmentConcepts(Sesion &s);

/// What the booking dialog holds when it is confirmed.
struct Appointment {
    int item = 0;
    int idm = 0; // patient, 0 without one
    QDate dia;
    QTime hour;
    QTime alarm; // invalid for none
    QString description;
    bool remind = false; // by mail
};

/// Whether the client gets a mail on the day: either because it was requested, or because the
/// settings ask for it for clients who tend to forget and the service is of kind 1 or 3.
bool carriesReminder(Sesion &s, const Appointment &appointment);

/// Writes the task, sets the patient's task flag and, for an appointment of today before 22:15,
/// offers to print the day's sheet or its update.
/// On purpose: nothing prevents two tasks at the same time.
/// @return the task's id
int book(Sesion &s, const Appointment &appointment);

/// The row of the appointment nearest to an hour: one at exactly that hour, else the first within
/// 15 minutes either side; -1 when there is none.
int nearestRow(const std::vector<DayTask> &appointments, QTime hour);

/// The row to put at the top when the list scrolls to @p row: the one above it, so that what comes
/// before stays visible. The first two rows are their own top.
int rowAbove(int row);

/// Parses a time as people type it: 9, 930, 9:30, 21.30, 9:30 pm, or as longHour writes it. Seconds
/// are dropped.
/// @return an invalid time for anything else
QTime typedHour(const QString &text);

} // namespace agenda
