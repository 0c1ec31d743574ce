// What a start does before the login, in this order, with or without a window.
#pragma once

#include "store/session.h"

class QLocale;

namespace startup
{

/// Whether the first run of this data folder has never been completed.
bool isFirstRun(Sesion &s);

/// The first run, before the clinic's data are entered. Sets the dates of the last start to today,
/// since there are no earlier days to make up for.
void beginFirstRun(Sesion &s);

/// The first run, once the clinic's data are written: creates the folders, the clinic's initial
/// data and the welcome line of the board. If it fails, no data are written and the next start
/// begins the first run again.
/// @throws StoreError also when a folder cannot be created
void finishFirstRun(Sesion &s);

/// The rest, at every start: reads the clinic's data, sets the session's day and checks it, and
/// checks the decimal separator. Asks the user when the last start lies in the future.
/// @param system the locale in which the user types numbers
/// @return false when the user wants to correct the date first: the program must end
bool checkStart(Sesion &s, const QLocale &system);

} // namespace startup
