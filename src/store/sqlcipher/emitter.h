// Translates statements of the dialect to the engine's SQL.
#pragma once

#include "store/jet/translation.h"

namespace sqlcipher
{

/// Translates one statement.
/// @param sql       a statement of the dialect, UTF-8, with '?' for values
/// @param catalogue tables of the database that the statement runs on
/// @param schema    name of that database in the engine, which qualifies every table
/// @param withKeys  also select the row key of every table, after the requested columns
/// @throws StoreError 3075 with line, column and a caret for anything outside the dialect,
///         3078 for an unknown table, 3061 for an unknown column
jet::Translation translate(std::string_view sql, const jet::Catalogue &catalogue,
                           std::string_view schema, bool withKeys = false);

} // namespace sqlcipher
