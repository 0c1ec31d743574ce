// The run that carries out the day's communications: delivery lists, mails, letters.
#pragma once

#include "store/session.h"

/// Sends what waits for a day, in this order: delivery lists are written and offered for printing;
/// mails go out over one connection, each noted as given to the server before the next one starts,
/// one for each reason and addressee; letters are noted as sent and then offered one by one, so
/// that answering No drops one, on purpose. Nobody being there counts as No; the outbox on the
/// screen still prints a letter of the day.
///
/// Where the mail server cannot be reached, what the settings let go by letter becomes a letter,
/// the board tells and the error log tells why. A message that fails ends alone. Nothing is sent to
/// the deceased.
/// Terminals may run this at once: each list and letter is one's alone, and one sends the mails.
/// @return false when another terminal was sending mails
/// @throws StoreError when the disk or the engine gives up; what went out is noted
bool EnviarMensajes(Sesion &s, QDate hoy);

namespace messages
{

/// The client that a task's message goes to, 0 when there is none.
int taskAddressee(Sesion &s, int tip, int ida);

} // namespace messages
