// Two reminder settings whose stored number is not simply that of an option.
#pragma once

#include "store/session.h"

namespace admin
{

/// Whether debtors get the three reminders: stored as 1, or as 3 by older versions. Anything else
/// means off.
bool remembersDebts(const Sesion &s);
/// Stores it as 1 or 0.
/// @throws StoreError
void saveRemembersDebts(Sesion &s, bool remembers);

/// Whether a second expiration is written about: stored as 1, or as -1 by older versions.
bool remembersSecondExpiry(const Sesion &s);
/// Stores it as 1 or 0.
/// @throws StoreError
void saveRemembersSecondExpiry(Sesion &s, bool remembers);

} // namespace admin
