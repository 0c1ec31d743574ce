// The kennels' feeding rounds on the agenda.
#pragma once

#include "store/session.h"

/// Writes today's feeding rounds when the kennels hold exactly one guest: they are made when the
/// kennels go from empty to one, so with two or more nothing is added, on purpose.
/// @param ask offer to print the day sheet again
void ActualizarRaciones(Sesion &s, bool ask);
