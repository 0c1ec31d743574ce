// The clinic's own data.
#pragma once

#include "store/session.h"

namespace admin
{

/// The strings that describe the clinic.
enum class ClinicDatum { Name, Owner, Address, Telephones };

/// Stores one of the clinic's strings, with apostrophes replaced and cut to its column's width, and
/// updates the session.
/// @throws StoreError
void saveClinicDatum(Sesion &s, ClinicDatum datum, const QString &text);
/// Width of the string's column in characters.
int datumWidth(const Sesion &s, ClinicDatum datum);

} // namespace admin
