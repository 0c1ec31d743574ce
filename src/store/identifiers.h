// Taking new identifiers from the counters of the settings row.
#pragma once

#include "store/session.h"

namespace store
{

/// The highest value of an identifier stored in 16 bits.
inline constexpr int Highest16BitId = 32767;

/// Increments a counter of the settings row and returns its new value. No two terminals ever get
/// the same one.
/// @param counter column of the settings row
/// @param maximum the last value that may be issued
/// @throws StoreError 6 with a text for the user when the maximum is used up; nothing is written
int takeIdentifier(Sesion &s, std::string_view counter, int maximum = 2147483647);

/// The next task id, from 1 to 2147483645.
/// On purpose: at the end of that range it deletes all tasks created before today and starts again
/// at 1.
/// @throws StoreError
int takeTaskId(Sesion &s);

} // namespace store
