// The clinic's own data.
#pragma once

#include "store/session.h"

namespace admin
{

enum class ClinicDatum { Name, Owner, Address, Telephones };

/// Stores one of the clinic's strings, without apostrophes and as much as its column takes; the
/// session knows it at once.
/// @throws StoreError
void saveClinicDatum(Sesion &s, ClinicDatum datum, const QString &text);
/// Characters that its column takes.
int datumWidth(const Sesion &s, ClinicDatum datum);

} // namespace admin
