// Sending mail through the clinic's own server, over one connection for a whole run.
#pragma once

#include "store/session.h"

#include <memory>

namespace messages
{

/// A session with the mail server. It keeps one connection, which is reopened only when the server
/// closes it or refuses a message, and closed with the object.
class MailSession
{
public:
    virtual ~MailSession() = default;

    /// Hands one message to the server and waits for its answer, for a limited time. A server that
    /// stopped answering or hung up several times in a row is not tried again.
    /// @param addresses one or more, separated by commas. The message counts as sent when the
    ///        server accepts one of them, and also when it has received the whole text but does
    ///        not answer: a message that may have arrived is never sent twice
    /// @return false when the message was not accepted; see error()
    virtual bool send(const QString &subject, const QString &addresses, const QString &body) = 0;
    /// Why the last message was not accepted or not answered, in the words of the server or of the
    /// library.
    virtual QString error() const = 0;
    /// Whether the server has been given up on; no further message will be sent then.
    virtual bool missed() const = 0;
};

} // namespace messages

/// Logs in to the server in the settings. If the user name, password or server is missing, the
/// user is told where to set it.
/// @param error receives the reason for a failure, if given
/// @param meanwhile called repeatedly while waiting for the server, by send as well
/// @return nullptr on any failure
std::unique_ptr<messages::MailSession> AbrirSesionCorreo(Sesion &s, QString *error = nullptr,
                                                         std::function<void()> meanwhile = {});

/// Sends a message to a client. A client without an address is flagged (`FaltaMail`).
/// @return whether the server accepted it
bool EnviarCorreo(Sesion &s, messages::MailSession &mail, const QString &subject, int idc,
                  const QString &body);

/// Logs out and releases the session.
void CerrarSesionCorreo(std::unique_ptr<messages::MailSession> &mail);
