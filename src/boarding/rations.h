// The kennels' feeding rounds on the agenda.
#pragma once

#include "store/session.h"

/// Writes today's feeding rounds when the kennels hold exactly one guest.
/// On purpose: two or more guests add nothing, because the rounds were written when the first one
/// arrived.
/// @param ask offer to print the day sheet again
void ActualizarRaciones(Sesion &s, bool ask);
