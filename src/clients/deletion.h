// Deleting clients and patients with everything that hangs on them.
#pragma once

#include "store/session.h"

namespace clients
{

/// Refuses a Common user, prepaid membership and debt, in this order; asks; then deletes the client
/// with all its patients. Files of patients go when the rows are gone for good.
/// @return whether it is gone: also when it was before, which is told
bool deleteClient(Sesion &s, int idc);

/// Refuses a Common user, asks, and deletes a patient with its cascade.
/// @return whether it is gone: also when it was before, which is told
bool deletePatient(Sesion &s, int idm);

} // namespace clients
