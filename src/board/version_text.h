// The version as people read it, and the title that it stands in.
#pragma once

#include "store/session.h"

namespace board
{

/// "5.5.4" for the stored number 554. Numbers with two digits are those of a time that counted the
/// third part alone: 57 is "5.0.7". 33 is "4.3.0".
QString versionText(int ver);

/// Clinic, version, day and user, as the title of the board's window.
QString boardTitle(Sesion &s);

} // namespace board
