// Sending the day's communications: delivery lists, mails, letters.
#pragma once

#include "store/session.h"

/// Sends everything that is due on a day, in this order:
/// - delivery lists are written and offered for printing;
/// - mails go out over one connection, one for each reason and addressee, and each is marked as
///   sent before the next one starts;
/// - letters are marked as sent and then offered for printing one by one.
///
/// On purpose: answering No drops a letter. With nobody there the answer is No; the outbox on
/// screen can still print the day's letters.
///
/// If the mail server cannot be reached, messages that the settings also allow by letter become
/// letters; the board says so and the error log says why. A message that fails does not stop the
/// others. Nothing is sent about deceased patients.
///
/// Several terminals may run this at once: each list and letter is taken by only one of them, and
/// only one sends the mails.
/// @return false when another terminal was sending mails
/// @throws StoreError when the disk or the engine fails; what went out by then is marked as sent
bool EnviarMensajes(Sesion &s, QDate hoy);

namespace messages
{

/// The client whom a task's message goes to, 0 when there is none.
/// @param tip kind of the task; it decides what @p ida identifies
int taskAddressee(Sesion &s, int tip, int ida);

} // namespace messages
