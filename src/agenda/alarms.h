// The alarms of today's tasks, kept in memory.
#pragma once

#include "store/session.h"

namespace agenda
{

/// Fills the session's alarms with today's open tasks whose alarm is still to come.
void loadAlarms(Sesion &s);

} // namespace agenda
