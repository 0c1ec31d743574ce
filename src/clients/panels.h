// The information shown beside a client and beside a patient.
#pragma once

#include "store/session.h"

namespace clients
{

/// Last visit, open debts with their last payment and reminders sent and, if the setting says so,
/// the client's profile. Items are separated by a line of dashes.
/// @throws StoreError
QString clientInformation(Sesion &s, int idc);

/// In care, pending appointments, boarding, last consultation and food, in this order, one per
/// line; what does not apply is left out.
/// @throws StoreError
QString patientInformation(Sesion &s, int idm);

/// An age in the session's language ("2 years 3 months"); "" without a birth date.
QString ageOf(const Sesion &s, QDate birth);

} // namespace clients
