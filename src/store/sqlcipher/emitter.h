// Statements of the dialect in the engine's SQL.
#pragma once

#include "store/jet/translation.h"

namespace sqlcipher
{

/// Translates one statement.
/// @param sql       the rules' dialect, UTF-8, '?' where a value goes
/// @param catalogue tables of the database that the statement runs on
/// @param schema    the engine's name of that database; every table is qualified with it
/// @param withKeys  also select the key of every base table's row, behind the asked columns
/// @throws StoreError 3075 with line, column and a caret for what the dialect does not take,
///         3078 for an unknown table, 3061 for a name that is no column
jet::Translation translate(std::string_view sql, const jet::Catalogue &catalogue,
                           std::string_view schema, bool withKeys = false);

} // namespace sqlcipher
