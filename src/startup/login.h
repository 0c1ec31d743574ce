// Who is working: the questions and their answers, without the window that asks them.
#pragma once

#include "store/session.h"

namespace startup
{

/// A login under way. It begins with beginLogin and is moved on by what the user enters.
struct Login {
    enum class Step { AsksName, AsksPassword, Inside, Ends };

    Step step = Step::AsksName;
    QString notice;   // to be shown after each step
    int attempts = 0; // wrong passwords so far
    store::User found;
    QString password; // of the user found
};

/// A clinic with one user who has no password is never asked: then the session has its user and
/// the login is over.
Login beginLogin(Sesion &s);

/// ENTER on the name. Letter case does not matter and `*` is a wildcard; the first row counts.
void giveName(Sesion &s, Login &login, const QString &text);

/// ENTER on the password, compared letter by letter. Four wrong ones are told as wrong, the fifth
/// try ends the program whatever it is.
void givePassword(Sesion &s, Login &login, const QString &text);

} // namespace startup
