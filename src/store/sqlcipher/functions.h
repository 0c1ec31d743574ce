// What the engine lacks of the dialect, added to a connection.
#pragma once

struct sqlite3;

namespace sqlcipher
{

/// Adds the collation and the functions that translated statements call. To be run once for each
/// connection, before the first statement. @throws StoreError when the engine refuses
void registerFunctions(sqlite3 *connection);

} // namespace sqlcipher
