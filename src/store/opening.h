// Opening the store when the program starts.
#pragma once

#include "store/session.h"

namespace store
{

/// Why the store could not be opened. The text can be shown to the user as it is.
struct OpeningFailure {
    int number = 0;
    QString text;
};

/// Opens the databases of the session's data folder, the settings row and the lists, closing what
/// was open before. Waits while another terminal has the folder to itself. Damaged files are
/// repaired and the user is informed. Tables, columns and indexes that this version declares and
/// the folder lacks are added, after the databases were copied to kelvara.copias.
/// Statements then wait for other terminals for StartPatienceMs until the caller sets the normal
/// limit, see Motor::setPatience.
/// @return nullopt on success; otherwise nothing is open
std::optional<OpeningFailure> openStore(Sesion &s);
/// Closes everything; recordsets still in use throw 3021 from now on. The store can be opened
/// again.
void closeStore(Sesion &s);

/// The text to show the user for an error of the store, in the session's language where there is
/// one.
QString errorText(const Sesion &s, const StoreError &e);

/// Reads the clinic's data into the session; they are empty when there are none.
/// @throws StoreError
void readClinic(Sesion &s);

} // namespace store
