// The first run of a data folder: its first user, and the data a clinic starts with.
#pragma once

#include "store/session.h"

namespace startup
{

/// What the first-run form collects.
struct FirstRunData {
    QString clinic;
    QString address;
    QString telephones;
    QString user;
    QString password;
    QString password2;
};

/// Checks what was entered on the first-run form.
/// @return 0 when all is well, else the number of the text that says what is wrong: 2259 for the
///         user's name, 5030 for the passwords
int validateFirstRun(const FirstRunData &data);

/// Writes the clinic and its first user, a Supervisor, replacing anything left by an earlier
/// attempt. A clinic without a name takes the user's.
void registerFirstRun(Sesion &s, const FirstRunData &data);

/// Translates categories, plans and labels into the program's language and adds products, services
/// and letters. Running it again only changes the language; nothing is added twice.
void seedFirstRun(Sesion &s);

} // namespace startup
