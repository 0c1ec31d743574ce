// Maintenance of the six reference lists: each function asks for what it needs and writes at once.
#pragma once

#include "clients/reference_lists.h"

namespace admin
{

/// Asks for a new entry and writes it. An unusable name is asked for again; a region or species
/// that does not exist ends it.
/// @return its id, nullopt when nothing was added
/// @throws StoreError 6 when the ids are used up
std::optional<int> addEntry(Sesion &s, clients::List list);

/// Asks for the new name and, for a region, its area code or, for a sub-region, its postal code and
/// region.
/// @return false when nothing was written
/// @throws StoreError 3061 for an area code with a letter
bool modifyEntry(Sesion &s, clients::List list, int id);

/// Deletes an entry that is not in use, after asking. Regions cannot be deleted.
/// @return whether it was deleted
/// @throws StoreError
bool deleteEntry(Sesion &s, clients::List list, int id);

/// The name of a sub-region's region or of a breed's species; "" when it has none.
QString parentName(Sesion &s, clients::List list, const clients::Entry &entry);

} // namespace admin
