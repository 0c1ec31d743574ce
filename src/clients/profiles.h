// What the clinic knows about its clients' habits.
#pragma once

#include "store/session.h"

/// Whether a client is featured: a good buyer and a frequent visitor who does not pay late. False
/// for an unknown client.
/// @throws StoreError
bool ClienteDestacado(Sesion &s, int idc);

/// The client's profile for the screen, one line per flag with "featured" first; "" if no flag is
/// set.
/// @throws StoreError
QString TextoPerfil(Sesion &s, int idc);
