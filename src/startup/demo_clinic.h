// A made-up clinic in full swing, for trying the program without entering any data.
#pragma once

#include "store/session.h"

namespace startup
{

/// Fills a data folder that has just been created and opened with a clinic whose last start was
/// three days ago, so that the next one finds something for every line of the board. The same day
/// and language always give the same clinic. It has a single user without a password, so there is
/// no login.
/// @throws StoreError when it cannot be written; nothing was written then
void createDemo(Sesion &s);

} // namespace startup
