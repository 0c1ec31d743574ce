// The data folder that this machine uses.
#pragma once

#include "store/session.h"

namespace admin
{

/// Asks for the server's data folder and writes it to ruta.txt, to be used from the next start on.
/// A folder without the main database is refused.
/// @return whether it was written
/// @throws StoreError
bool connectTerminal(Sesion &s);

} // namespace admin
