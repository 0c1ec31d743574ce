// Appointments as a calendar file that telephones and other programs open.
#pragma once

#include "agenda/day_list.h"

/// The tasks as iCalendar text (RFC 5545), each an hour long unless the service says otherwise;
/// those without an hour take the whole day. Times are the clinic's own, without a time zone.
QByteArray ComoCalendario(Sesion &s, const std::vector<TareaDelDia> &tareas);
