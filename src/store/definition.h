// Schema changes made by statements of the dialect.
#pragma once

#include "store/jet/translation.h"

class Motor;

namespace store
{

/// Carries out a definition completely or not at all.
/// @param catalogue the tables as they are now
/// @param d names tables and columns in any letter case
/// @return the table's name in the database's own letter case
/// @throws StoreError 3010 or 3380 for a table or column that already exists, 3078 or 3265 for one
///         that does not
std::string define(Motor &motor, const std::string &schema, const jet::Catalogue &catalogue,
                   jet::Definition d);

} // namespace store
