// Changes of the schema by statements of the dialect.
#pragma once

#include "store/jet/translation.h"

class Motor;

namespace store
{

/// Carries out a definition, as a whole or not at all.
/// @param catalogue the tables as they stand
/// @return the table's name in the database's own letter case
/// @throws StoreError 3010 or 3380 for a table or column that is there already, 3078 or 3265 for
/// one that is not
std::string define(Motor &motor, const std::string &schema, const jet::Catalogue &catalogue,
                   jet::Definition d);

} // namespace store
