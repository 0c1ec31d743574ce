// What the board's clock watches: the alarms of today, and midnight.
#pragma once

#include "store/session.h"

namespace board
{

/// Alarms whose time has come, from two whole minutes before; each is marked as rung.
/// @return what to say of each; a name that cannot be read is left out, the alarm is not
QStringList ringingAlarms(Sesion &s);

/// Whether the computer's clock has left the session's day behind.
bool dayChanged(const Sesion &s);

} // namespace board
