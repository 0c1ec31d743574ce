// Opening the store at the start of the program.
#pragma once

#include "store/session.h"

/// Why a start cannot go on. The text can be shown as it is.
struct FallaDeApertura {
    int numero = 0;
    QString texto;
};

/// Opens morvane, clientes and finanzas of the session's data folder, the settings row and the
/// lists. @return nullopt when all is open; then the session can be worked with
std::optional<FallaDeApertura> AbrirAlmacen(Sesion &s);

/// What to tell the user of a failure of the store.
QString TextoDeError(const Sesion &s, const ErrorDeAlmacen &e);

/// Opens "os" or "rep97" as the scratch database, closing the one that was open.
/// @throws ErrorDeAlmacen
Base &AbrirAuxiliar(Sesion &s, const QString &base);
void CerrarAuxiliar(Sesion &s);

/// Reads the clinic's four strings.
void LeerClinica(Sesion &s);
