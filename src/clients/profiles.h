// What the clinic has learnt of its clients.
#pragma once

#include "store/session.h"

/// A featured client: good buyer and frequent, and does not pay late. False when there is no such
/// client.
bool ClienteDestacado(Sesion &s, int idc);

/// The client's profile for the screen, one line for each flag, "featured" first; "" without any.
QString TextoPerfil(Sesion &s, int idc);
