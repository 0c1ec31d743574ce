// Appointments as a calendar file that telephones and other programs can open.
#pragma once

#include "agenda/day_list.h"

namespace agenda
{

/// The tasks as iCalendar text (RFC 5545), in UTF-8. Each lasts as long as its service; those
/// without an hour take the whole day. Times are local, without a time zone. A task keeps its UID
/// when it is moved, so importing it again moves it in the other calendar too.
QByteArray asCalendar(Sesion &s, const std::vector<DayTask> &tasks);

/// Writes the tasks to a calendar file.
/// @throws StoreError 75 when it cannot be written; an existing file is kept then
void saveCalendar(Sesion &s, const std::vector<DayTask> &tasks, const QString &file);

} // namespace agenda
