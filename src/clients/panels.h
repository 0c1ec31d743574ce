// What is told beside a client and beside a patient.
#pragma once

#include "store/session.h"

namespace clients
{

/// Last visit, open debts with their last payment and notices, and, where the setting says so, the
/// client's profile. Lines parted by line feeds.
QString clientInformation(Sesion &s, int idc);

/// In care, pending appointments, boarding, last consultation and food, in this order; what does
/// not apply is left out.
QString patientInformation(Sesion &s, int idm);

/// Age in words of the session's language ("2 years 3 months"), "" without a birth date.
QString ageOf(const Sesion &s, QDate birth);

} // namespace clients
