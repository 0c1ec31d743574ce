// Tables as the engine declares them, and the statements that change them.
#pragma once

#include "store/engine.h"

struct sqlite3;

namespace sqlcipher
{

/// The column by which the rows of a table are known that declares no counter of its own.
inline constexpr const char *RowKeyColumn = "row_key";

std::vector<std::string> tables(sqlite3 *db, const std::string &schema);

/// See Motor::describe.
store::TableDescription describe(sqlite3 *db, const std::string &schema, const std::string &table);

/// What is to be run, one after the other and as a whole, for a definition to be carried out; see
/// Motor::define.
std::vector<std::string> statementsOf(sqlite3 *db, const std::string &schema,
                                      const jet::Definition &d);

/// The same for giving a table its key.
std::vector<std::string> keyStatements(sqlite3 *db, const std::string &schema,
                                       const std::string &table);

} // namespace sqlcipher
