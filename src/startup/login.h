// Who is working: the questions and their answers, without the window that asks them.
#pragma once

#include "store/session.h"

/// A login under way. It begins with EmpezarLogin and is moved on by what the user enters.
struct Login {
    enum class Paso { PideNombre, PideContrasena, Dentro, Termina };

    Paso paso = Paso::PideNombre;
    QString aviso;    // to be shown after each step
    int intentos = 0; // wrong passwords so far
    Usuario hallado;
    QString contrasena; // of the user found
};

/// A clinic with one user who has no password is never asked: then the session has its user and
/// the login is over.
Login EmpezarLogin(Sesion &s);

/// ENTER on the name. Letter case does not matter and `*` is a wildcard; the first row counts.
void DarNombre(Sesion &s, Login &login, const QString &texto);

/// ENTER on the password, compared letter by letter. Four wrong ones are told as wrong, the fifth
/// try ends the program whatever it is.
void DarContrasena(Sesion &s, Login &login, const QString &texto);
