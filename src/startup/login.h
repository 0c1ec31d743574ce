// The rules of the login, without the window.
#pragma once

#include "store/session.h"

namespace startup
{

/// A login in progress. It starts with beginLogin and advances with what the user enters.
struct Login {
    enum class Step { AsksName, AsksPassword, Inside, Ends };

    Step step = Step::AsksName;
    QString notice;   // to show after each step
    int attempts = 0; // wrong passwords so far
    store::User found;
    QString password; // of the user found
};

/// Starts a login. With a single user who has no password it is over at once, and the session has
/// its user.
Login beginLogin(Sesion &s);

/// ENTER on the name. Letter case does not matter and `*` is a wildcard; the first match counts.
void giveName(Sesion &s, Login &login, const QString &text);

/// ENTER on the password, which is compared exactly, letter case included. The first four wrong
/// passwords are rejected; after them any further attempt, even the right password, ends the
/// program.
void givePassword(Sesion &s, Login &login, const QString &text);

} // namespace startup
