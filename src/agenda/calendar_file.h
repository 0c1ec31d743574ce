// Appointments as a calendar file that telephones and other programs open.
#pragma once

#include "agenda/day_list.h"

/// The tasks as iCalendar text (RFC 5545), each as long as its service;
/// those without an hour take the whole day. Times are the clinic's own, without a time zone. A
/// task that was moved keeps its name there, so a calendar that has it moves it too.
QByteArray ComoCalendario(Sesion &s, const std::vector<TareaDelDia> &tareas);

/// Writes them to a file. @throws ErrorDeAlmacen 75 when it cannot be written; a former one is
/// still there then
void GuardarCalendario(Sesion &s, const std::vector<TareaDelDia> &tareas, const QString &archivo);
