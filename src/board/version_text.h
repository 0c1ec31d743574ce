// The version number in readable form, and the window title that contains it.
#pragma once

#include "store/session.h"

namespace board
{

/// A stored version number as text: "5.5.4" for 554. On purpose: two-digit numbers are older ones
/// without the middle part, so that 57 is "5.0.7", and 33 is "4.3.0".
QString versionText(int ver);

/// The title of the board's window: clinic, version, date and user.
QString boardTitle(Sesion &s);

} // namespace board
