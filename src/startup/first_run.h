// The first run of a data folder: who works here, and what a clinic starts with.
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

/// @return 0, or the number of the text that says what is wrong: 2259 for the name of the user,
///         5030 for the passwords
int validateFirstRun(const FirstRunData &data);

/// Writes the clinic and its first user, a Supervisor, in place of what an earlier try has left.
/// A clinic without a name takes the user's.
void registerFirstRun(Sesion &s, const FirstRunData &data);

/// Puts categories, plans and labels into the program's language and adds products, services and
/// letters. Run again, it changes the language and adds nothing twice.
void seedFirstRun(Sesion &s);

} // namespace startup
