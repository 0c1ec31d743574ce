// How a client is reached: by post, telephone and mail. Below the agenda, which must know it too.
#pragma once

#include "store/session.h"

/// Street, sub-region, region and postal code, parted by ", "; what is missing is left out.
QString DomicilioCliente(Sesion &s, int idc);

/// Landline and mobile joined by " / "; the one there is, or "".
QString TelefonosCliente(Sesion &s, int idc);

/// The client's mail addresses, "" unless there is an at sign among them.
QString DireccionCliente(Sesion &s, int idc);
