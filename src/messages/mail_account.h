// The account that mail is sent from. All terminals share it, because any of them may start the day
// and send. Name and password are in the settings row, the server in the clinic's settings file.
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

    /// Whether both user name and password are set.
    bool complete() const { return !user.isEmpty() && !password.isEmpty(); }
};

/// Reads the account. Where no valid port is stored, it is the usual one for the encryption.
MailAccount readMailAccount(Sesion &s);
/// Stores the account. Of the server's settings, only those that differ from the stored ones are
/// written.
/// @throws StoreError when it cannot be written
void saveMailAccount(Sesion &s, const MailAccount &account);
/// Stores the server's settings alone, as far as they differ from the stored ones.
/// @throws StoreError when they cannot be written
void saveMailServer(Sesion &s, const MailAccount &account);
/// Asks for user name and password, repeating each question while the answer does not fit its
/// column, and stores both. Nothing changes when the name is empty or the user cancels.
/// @return whether they were stored
bool modifyMailAccount(Sesion &s);
/// Whether a number is a valid port, 1 to 65535.
bool isPort(int port);
/// The usual port: 587 with STARTTLS, 465 with TLS, 25 without encryption.
int usualPort(Encryption encryption);

} // namespace messages
