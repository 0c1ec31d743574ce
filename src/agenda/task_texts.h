// Names, pictures and texts for tasks.
#pragma once

#include "store/session.h"

namespace agenda
{

/// Name of what is to be done: the service or product or, failing that, the category of product
/// @p artaux. Feeding rounds and users' tasks have names of their own, and the program's
/// communications are called by their reason.
QString taskConcept(Sesion &s, int tip, qint64 artaux);

/// Why the program writes to a client, for the kinds of task that it creates itself; "" for any
/// other kind.
QString taskReason(const Sesion &s, int tip);

/// "Email communication" and the like, for one of the values in namespace Channel; "" for none.
QString channelInWords(const Sesion &s, int medio);

/// Name of the picture for a concept in the day's list, chosen by the words in its name; "" when
/// no word is known.
QString agendaIcon(const Sesion &s, const QString &item);
/// The same for the booking list and the day sheet, which have pictures of their own.
QString sheetIcon(const Sesion &s, const QString &item);

/// What `ida` of a task identifies.
enum class Subject { Nobody, Patient, Client, Supplier, User };
/// What `ida` identifies for a kind of task.
Subject taskSubject(int tip);

} // namespace agenda
