// Making a new data folder.
#pragma once

#include "store/texts.h"

#include <QString>

namespace startup
{

/// Makes the five databases in a folder, which may exist: tables, indexes, the settings row with
/// PrimeraVez set and the rows that no clinic goes without. Names and labels are in Spanish until
/// the first run, which also adds products, services and letters.
/// @param language of the kinds of taxpayer and of what a failure says
/// @throws StoreError 75 when the folder holds one of the databases already or cannot be
///         written; then it is as it was
void createFolder(const QString &folder, store::Language language);

} // namespace startup
