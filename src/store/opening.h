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

/// Opens morvane, clientes and finanzas of the session's data folder, the settings row and the
/// lists. @return nullopt when all is open; then the session can be worked with
std::optional<OpeningFailure> openStore(Sesion &s);

/// What to tell the user of a failure of the store.
QString errorText(const Sesion &s, const StoreError &e);

/// Opens "os" or "rep97" as the scratch database, closing the one that was open.
/// @throws StoreError
Base &openScratch(Sesion &s, const QString &base);
void closeScratch(Sesion &s);

/// Reads the clinic's four strings.
void readClinic(Sesion &s);

} // namespace store
