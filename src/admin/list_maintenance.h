// Maintenance of the six reference lists in the settings: each change asks what it needs to know
// and is written at once.
#pragma once

#include "clients/reference_lists.h"

namespace admin
{

/// Asks for a new entry and writes it. What cannot be a name is told and asked again; a region or
/// species that is not found refuses the whole.
/// @return its id, nullopt when nothing was added
/// @throws StoreError 6 when its identifiers are used up
std::optional<int> addEntry(Sesion &s, clients::List list);

/// Asks for the new name and what belongs to it: the area code of a region, the postal code and
/// the region of a sub-region. @return false when nothing was written
/// @throws StoreError 3061 for a region's area code with a letter
bool modifyEntry(Sesion &s, clients::List list, int id);

/// Deletes an entry that nothing uses, after asking. Regions cannot be deleted.
/// @return whether it is gone
bool deleteEntry(Sesion &s, clients::List list, int id);

/// Name of the region of a sub-region, or of the species of a breed; "" when it has none.
QString parentName(Sesion &s, clients::List list, const clients::Entry &entry);

} // namespace admin
