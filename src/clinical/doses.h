// Questions about the planned doses of a patient.
#pragma once

#include "store/session.h"

/// Doses of the category that were due before this one and are still open (`si` 0 or 2). 0 means
/// that the dose is the oldest one open. Only doses due before today are looked at.
int ContarDosisAtrasadas(Sesion &s, int idm, int ida, int dos, int idcat);
