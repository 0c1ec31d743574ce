// Mail through the clinic's own server: one connection for a whole run.
#pragma once

#include "store/session.h"

#include <memory>

namespace messages
{

/// An open session with the mail server, of one connection: it is made anew only when the server
/// ends it or a message is refused. Ends with the object.
class MailSession
{
public:
    virtual ~MailSession() = default;

    /// Hands one message to the server and waits for its answer, for a limited time. A server that
    /// fell silent or hung up several times in a row is not tried again. @param addresses one or
    /// more, parted by commas; the message counts as sent when the server takes one of them, and
    /// also when it has the whole text and does not answer: what may have arrived is never sent
    /// twice
    /// @return false when it was not taken; see Error
    virtual bool send(const QString &subject, const QString &addresses, const QString &body) = 0;
    /// Why the last message was not taken, or not answered, in the server's or the library's words.
    virtual QString error() const = 0;
    /// Whether the server has been given up, so that nothing more will be taken.
    virtual bool missed() const = 0;
};

} // namespace messages

/// Signs on to the server of the settings. Without user name, password or server the user is told
/// where to set them; any failure gives nullptr.
/// @param error why, if wanted
/// @param meanwhile called again and again for as long as the server is waited for, also by Enviar
std::unique_ptr<messages::MailSession> AbrirSesionCorreo(Sesion &s, QString *error = nullptr,
                                                         std::function<void()> meanwhile = {});

/// Sends a message to a client. One without an address is marked as such (`FaltaMail`).
/// @return whether the server took it
bool EnviarCorreo(Sesion &s, messages::MailSession &mail, const QString &subject, int idc,
                  const QString &body);

/// Signs off.
void CerrarSesionCorreo(std::unique_ptr<messages::MailSession> &mail);
