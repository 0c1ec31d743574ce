// What went out today, what waits, and the text of each message.
#pragma once

#include "store/session.h"

namespace messages
{

/// One row of the outbox.
struct DayMessage {
    int id = 0;
    int tip = 0;
    int medio = 0;
    int ida = 0;
    int artaux = 0;
    QString addressee;
    QString reason;
    QString icon; // "" for none
    QString byChannel;
    bool wentOut = false;
    QString state;
};

/// The messages of today.
std::vector<DayMessage> dayMessages(Sesion &s);

/// The text that the addressee gets: the mail text when the task may go either way and the client
/// has an address, else that of the task's medium.
QString messageText(Sesion &s, const DayMessage &message);

} // namespace messages
