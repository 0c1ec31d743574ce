// What two of the reminders' settings hold, whose number is not that of an option.
#pragma once

#include "store/session.h"

/// Whether debtors get the three reminders: stored as 1, and as 3 by older versions. Whatever else
/// stands there is off.
bool RecuerdaDeudas(const Sesion &s);
/// @throws ErrorDeAlmacen
void GuardarRecuerdaDeudas(Sesion &s, bool recuerda);

/// Whether a second expiration is written of: stored as 1, and as -1 by older versions.
bool RecuerdaSegundoVencimiento(const Sesion &s);
/// @throws ErrorDeAlmacen
void GuardarRecuerdaSegundoVencimiento(Sesion &s, bool recuerda);
