// What the engine lacks of the dialect, added to a connection.
#pragma once

struct sqlite3;

namespace jet
{

/// Adds the collation and the functions that translated statements call. To be run once for each
/// connection, before the first statement. @throws ErrorDeAlmacen when the engine refuses
void RegistrarFunciones(sqlite3 *conexion);

} // namespace jet
