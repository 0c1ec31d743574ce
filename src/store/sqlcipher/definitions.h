// How tables are declared in the engine, and the statements that change them.
#pragma once

#include "store/engine.h"

struct sqlite3;

namespace sqlcipher
{

/// The hidden key column of a table that declares no counter.
inline constexpr const char *RowKeyColumn = "row_key";

/// See Motor::tables.
std::vector<std::string> tables(sqlite3 *db, const std::string &schema);

/// See Motor::describe.
store::TableDescription describe(sqlite3 *db, const std::string &schema, const std::string &table);

/// The statements that carry out a definition; run them in order in one transaction. See
/// Motor::define.
std::vector<std::string> statementsOf(sqlite3 *db, const std::string &schema,
                                      const jet::Definition &d);

/// The same for adding the key to a table, see Motor::giveKey.
std::vector<std::string> keyStatements(sqlite3 *db, const std::string &schema,
                                       const std::string &table);

} // namespace sqlcipher
