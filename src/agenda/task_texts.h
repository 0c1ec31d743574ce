// What a task is called, pictured and told in words.
#pragma once

#include "store/session.h"

namespace agenda
{

/// Name of what is to be done: the service or product; without one the category of @p artaux; the
/// system's own words for feeding rounds and users' tasks.
QString taskConcept(Sesion &s, int tip, qint64 artaux);

/// Why the system writes to a client: the text of one of its own kinds, "" for any other.
QString taskReason(const Sesion &s, int tip);

/// "Email communication" and the like, "" for none.
QString channelInWords(const Sesion &s, int medio);

/// Picture of a concept in the day's list, by the words in its name; "" when none is found.
QString agendaIcon(const Sesion &s, const QString &item);
/// The same for the booking list and the day sheet.
QString sheetIcon(const Sesion &s, const QString &item);

/// What `ida` of a task identifies.
enum class Subject { Nobody, Patient, Client, Supplier, User };
Subject taskSubject(int tip);

} // namespace agenda
