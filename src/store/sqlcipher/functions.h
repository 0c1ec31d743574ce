// What the dialect needs and the engine lacks, added to a connection.
#pragma once

struct sqlite3;

namespace sqlcipher
{

/// Adds the collation and the functions that translated statements use. Call it once for each
/// connection, before the first statement. @throws StoreError when the engine refuses
void registerFunctions(sqlite3 *connection);

} // namespace sqlcipher
