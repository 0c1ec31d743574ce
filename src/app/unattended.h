// Runs without a window: making data folders, importing, and the day's start for cron.
#pragma once

#include "app/options.h"

namespace app
{

/// A start without a window. Prints one line for each board line on standard output,
/// picture, two codes and message separated by tabs; messages go to standard error.
/// @return the exit status: 0, or 1 with the reason told
int runUnattended(const Options &options, store::Language language);

/// Tells on standard output what an import would do, or does it: columns, counts, then one line for
/// each line of the file that was refused or has a warning, `line<TAB>result<TAB>client<TAB>patient
/// <TAB>why`. @return the exit status: 0, or 1 with the reason told
int importData(const Options &options, store::Language language);

/// Makes a new data folder. @return the exit status
int createData(const Options &options, store::Language language);

} // namespace app
