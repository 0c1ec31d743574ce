// Taking new identifiers from the counters of the settings row.
#pragma once

#include "store/session.h"

namespace store
{

/// Highest value of identifiers that are 16 bits wide.
inline constexpr int Highest16BitId = 32767;

/// Raises a counter of the settings row by one and gives the new value; two terminals never get
/// the same. @param maximum last value that may be given out
/// @throws StoreError 6 with the user's text when it would be passed; nothing is written
int takeIdentifier(Sesion &s, std::string_view counter, int maximum = 2147483647);

/// The next task id. At the end of its range, tasks made before today are deleted and the count
/// starts again at 1.
int takeTaskId(Sesion &s);

} // namespace store
