// Which data folder this machine works on.
#pragma once

#include "store/session.h"

/// Asks for the server's data folder and writes it to ruta.txt; it holds from the next start on.
/// A folder without the main database is refused.
/// @return whether it was written
bool ConectarTerminal(Sesion &s);
