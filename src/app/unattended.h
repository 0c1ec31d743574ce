// Runs without a window: creating data folders, importing, and the daily start from cron.
#pragma once

#include "app/options.h"

namespace app
{

/// Runs the day's start without a window. Prints one line per board line on standard output,
/// `picture<TAB>code1<TAB>code2<TAB>message`; messages go to standard error.
/// @return the exit status: 0, or 1 after printing the reason
int runUnattended(const Options &options, store::Language language);

/// Imports a file or, without Options::confirm, reports what an import would do. Prints the columns
/// and counts, then one line per rejected or doubtful line of the file,
/// `line<TAB>result<TAB>client<TAB>patient<TAB>why`.
/// @return the exit status: 0, or 1 after printing the reason
int importData(const Options &options, store::Language language);

/// Creates a data folder, with a demo clinic if Options::demo is set, and prints its path.
/// @return the exit status: 0, or 1 after printing the reason
int createData(const Options &options, store::Language language);

} // namespace app
