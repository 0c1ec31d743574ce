// Opening the store at the start of the program.
#pragma once

#include "store/session.h"

namespace store
{

/// Why a start cannot go on. The text can be shown as it is.
struct OpeningFailure {
    int number = 0;
    QString text;
};

/// Opens the databases of the session's data folder with the settings row and the lists, closing
/// what was open. Waits for a terminal that has the folder or the disk to itself. A file that is
/// damaged is repaired, and the user told; what this version declares and the folder lacks is
/// added, with a copy of the databases kept in kelvara.copias. Until the program has started,
/// statements wait for other terminals as long as the start does; see Motor::setPatience.
/// @return nullopt when all is open; then the session can be worked with. Else nothing is open
std::optional<OpeningFailure> openStore(Sesion &s);
/// Closes it all; recordsets that are still around answer with 3021. The store can be opened again.
void closeStore(Sesion &s);

/// What to tell the user of a failure of the store.
QString errorText(const Sesion &s, const StoreError &e);

/// Reads the clinic's four strings.
void readClinic(Sesion &s);

} // namespace store
