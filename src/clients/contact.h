// How a client is reached: the postal address and the telephones in one line.
#pragma once

#include "store/session.h"

/// Street, sub-region, region and postal code, parted by ", "; what is missing is left out.
QString DomicilioCliente(Sesion &s, int idc);

/// Landline and mobile joined by " / "; the one there is, or "".
QString TelefonosCliente(Sesion &s, int idc);
