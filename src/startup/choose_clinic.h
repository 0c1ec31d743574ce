// The first start on a machine that knows of no clinic: where its data shall be.
#pragma once

#include "store/session.h"

namespace startup
{

/// Whether this machine knows of no clinic: no data folder was given or noted, and the program's
/// own holds none.
bool knowsNoClinic(const Sesion &s);

/// Asks what to start with: a clinic of one's own in the program's folder, one in a shared folder,
/// which is noted in ruta.txt, or the demo, in a folder of its own that later starts use again.
/// Sets the session's data folder to it. A folder that does not do is told and asked for again.
/// @return false when the user gave up: nothing was made or noted
/// @throws StoreError when the clinic cannot be made
bool chooseClinic(Sesion &s);

} // namespace startup
