// Maintenance of the six reference lists in the settings: each change asks what it needs to know
// and is written at once.
#pragma once

#include "clients/reference_lists.h"

/// Asks for a new entry and writes it. What cannot be a name is told and asked again; a region or
/// species that is not found refuses the whole.
/// @return its id, nullopt when nothing was added
/// @throws ErrorDeAlmacen 3163 when its identifiers are used up
std::optional<int> AgregarEntrada(Sesion &s, Lista lista);

/// Asks for the new name and what belongs to it: the area code of a region, the postal code and
/// the region of a sub-region. @return false when nothing was written
/// @throws ErrorDeAlmacen 3061 for a region's area code with a letter
bool ModificarEntrada(Sesion &s, Lista lista, int id);

/// Deletes an entry that nothing uses, after asking. Regions cannot be deleted.
/// @return whether it is gone
bool EliminarEntrada(Sesion &s, Lista lista, int id);

/// Name of the region of a sub-region, or of the species of a breed; "" when it has none.
QString NombreDelPadre(Sesion &s, Lista lista, const Entrada &entrada);
