// What two of the reminders' settings hold, whose number is not that of an option.
#pragma once

#include "store/session.h"

namespace admin
{

/// Whether debtors get the three reminders: stored as 1, and as 3 by older versions. Whatever else
/// stands there is off.
bool remembersDebts(const Sesion &s);
/// @throws StoreError
void saveRemembersDebts(Sesion &s, bool remembers);

/// Whether a second expiration is written of: stored as 1, and as -1 by older versions.
bool remembersSecondExpiry(const Sesion &s);
/// @throws StoreError
void saveRemembersSecondExpiry(Sesion &s, bool remembers);

} // namespace admin
