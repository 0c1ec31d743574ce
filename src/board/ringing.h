// What the board's clock watches: today's alarms, and midnight.
#pragma once

#include "store/session.h"

namespace board
{

/// The alarms due now, from two whole minutes before their time on; each is marked as rung.
/// @return one message per alarm; what the store cannot read is left out of it, but the alarm still
/// rings
QStringList ringingAlarms(Sesion &s);

/// Whether the computer's date is past the session's.
bool dayChanged(const Sesion &s);

} // namespace board
