// What a start does before anybody is asked who he is, in the order in which it is done. With a
// window and without one the same functions run.
#pragma once

#include "store/session.h"

class QLocale;

namespace startup
{

/// Whether this data folder has never been started to the end.
bool isFirstRun(Sesion &s);

/// The first run, before the clinic's data are asked for: there is no day to catch up with.
void beginFirstRun(Sesion &s);

/// The first run, once the clinic's data are written: folders, the seeds of the clinic and the
/// welcome line of the board. Nothing of it is left behind when it fails, and the next start
/// begins the first run again.
/// @throws StoreError also when a folder cannot be made
void finishFirstRun(Sesion &s);

/// The rest, at every start: the clinic's data, the day of the session, the sanity of that day and
/// the decimal separator. Asks when the last start lies in the future.
/// @param system the locale whose numbers the user types
/// @return false when the user wants to put the date right first: the program must end
bool checkStart(Sesion &s, const QLocale &system);

} // namespace startup
