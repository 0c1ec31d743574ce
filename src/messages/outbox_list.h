// What went out today, what is still waiting, and the text of each message.
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

/// Today's messages, sent and unsent.
std::vector<DayMessage> dayMessages(Sesion &s);

/// The text that the addressee gets. A task that may go either way uses the mail text if the client
/// has an address; otherwise the task's channel decides.
QString messageText(Sesion &s, const DayMessage &message);

} // namespace messages
