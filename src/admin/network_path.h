// Which data folder this machine works on.
#pragma once

#include "store/session.h"

namespace admin
{

/// Asks for the server's data folder and writes it to ruta.txt; it holds from the next start on.
/// A folder without the main database is refused.
/// @return whether it was written
bool connectTerminal(Sesion &s);

} // namespace admin
