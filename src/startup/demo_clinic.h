// A made-up clinic in full swing, to look at the program without typing.
#pragma once

#include "store/session.h"

namespace startup
{

/// Fills a data folder that was just made and opened: a clinic three days after its last start,
/// whose next one finds something for every line of the board. The same day and language give the
/// same clinic. One user without a password, so that nobody is asked who is working.
/// @throws StoreError; then nothing was written
void createDemo(Sesion &s);

} // namespace startup
