// Changes of the schema: what a table's rows are known by.
#pragma once

#include <string>

class Motor;

namespace store
{

/// The column by which the rows of a table are known that declares no counter of its own. It is
/// numbered by the engine, also when another program adds a row; a number is never given out twice,
/// and the rules do not see it.
inline constexpr const char *RowKeyColumn = "row_key";

/// As it stands in the declaration of a table, behind the last column.
std::string rowKeyDeclaration();

/// Makes a table anew that was made without a key, with its rows in their order, its defaults and
/// its indexes. To be called before statements run on the table.
/// @return false when the table has a key already, and nothing is done
/// @throws StoreError; the table is as it was then
bool giveRowKey(Motor &motor, const std::string &schema, const std::string &table);

} // namespace store
