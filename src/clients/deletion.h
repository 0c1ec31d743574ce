// Deletes clients and patients together with everything that belongs to them.
#pragma once

#include "store/session.h"

namespace clients
{

/// Deletes a client with all its patients, after asking. Refused, in this order, for a Common user,
/// for a prepaid membership and for a debt. Image files are removed once the rows are gone.
/// @return whether the client is gone, which includes one already deleted; the user is told then
/// @throws StoreError; nothing has been deleted then
bool deleteClient(Sesion &s, int idc);

/// Deletes a patient and its records, after asking. Refused for a Common user.
/// @return whether the patient is gone, which includes one already deleted; the user is told then
/// @throws StoreError; nothing has been deleted then
bool deletePatient(Sesion &s, int idm);

} // namespace clients
