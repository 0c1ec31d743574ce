// The alarms of today's tasks, kept in memory.
#pragma once

#include "store/session.h"

namespace agenda
{

/// Replaces the session's alarms by those of today's open tasks that are still to ring.
void loadAlarms(Sesion &s);

} // namespace agenda
