// Appointments as a calendar file that telephones and other programs open.
#pragma once

#include "agenda/day_list.h"

namespace agenda
{

/// The tasks as iCalendar text (RFC 5545), each as long as its service;
/// those without an hour take the whole day. Times are the clinic's own, without a time zone. A
/// task that was moved keeps its name there, so a calendar that has it moves it too.
QByteArray asCalendar(Sesion &s, const std::vector<DayTask> &tasks);

/// Writes them to a file. @throws StoreError 75 when it cannot be written; a former one is
/// still there then
void saveCalendar(Sesion &s, const std::vector<DayTask> &tasks, const QString &file);

} // namespace agenda
