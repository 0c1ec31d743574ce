// Booking appointments and users' tasks.
#pragma once

#include "agenda/day_list.h"

namespace agenda
{

/// What can be booked: a service, or a task of the user himself.
struct AppointmentConcept {
    int ida = 0; // the service; -100 for the user's task
    QString nom;
};
/// The services by name, then the user's task.
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

/// Whether the client gets a mail on the day: because it was asked for, or because the settings
/// demand it of those who are known to forget and the service is of kind 1 or 3.
bool carriesReminder(Sesion &s, const Appointment &appointment);

/// Writes the task, marks the patient, and for an appointment of today before 22:15 offers to print
/// the day's sheet or its update. Nothing prevents two tasks at one time, on purpose.
/// @return the task's id
int book(Sesion &s, const Appointment &appointment);

/// Which of a day's appointments is nearest to what an hour is looked up for: one at exactly that
/// hour, else the first within 15 minutes either side; -1 when there is none.
int nearestRow(const std::vector<DayTask> &appointments, QTime hour);

/// The row that stands on top when the list scrolls to a row: the one above, so that what comes
/// before is seen too, except for the first two.
int rowAbove(int row);

/// A time as people type it: 9, 930, 9:30, 21.30, 9:30 pm, and as longHour writes it; to the
/// minute. Invalid for anything else.
QTime typedHour(const QString &text);

} // namespace agenda
