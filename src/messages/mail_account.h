// The account that mails leave from, one for all terminals: whichever starts the day sends. Name
// and password stand in the settings row, the server in the clinic's settings file.
#pragma once

#include "store/session.h"

namespace messages
{

enum class Encryption { None, StartTls, Tls };

struct MailAccount {
    QString user;
    QString password;
    QString server;
    int port = 587;
    Encryption encryption = Encryption::StartTls;

    bool complete() const { return !user.isEmpty() && !password.isEmpty(); }
};

MailAccount readMailAccount(Sesion &s);
/// Stores all of it; of the server as much as differs from what is stored.
/// @throws StoreError
void saveMailAccount(Sesion &s, const MailAccount &account);
/// The server alone, as far as it differs from what is stored.
/// @throws StoreError
void saveMailServer(Sesion &s, const MailAccount &account);
/// Asks for name and password, each again while it is longer than its column, and stores both;
/// without a name, or backing out, all stays as it was.
/// @return whether they were stored
bool modifyMailAccount(Sesion &s);
/// A number that a port can have.
bool isPort(int port);
/// 587 with STARTTLS, 465 with TLS, 25 without either.
int usualPort(Encryption encryption);

} // namespace messages
