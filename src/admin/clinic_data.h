// The clinic's own data.
#pragma once

#include "store/session.h"

enum class DatoDeClinica { Nombre, Propietario, Direccion, Telefonos };

/// Stores one of the clinic's strings, without apostrophes and as much as its column takes; the
/// session knows it at once.
/// @throws ErrorDeAlmacen
void GuardarDatoDeClinica(Sesion &s, DatoDeClinica dato, const QString &texto);
/// Characters that its column takes.
int AnchoDeDato(const Sesion &s, DatoDeClinica dato);
