// Creating a new data folder.
#pragma once

#include "store/texts.h"

#include <QString>

namespace startup
{

/// Creates the five databases in a folder, which may exist already: tables, indexes, the settings
/// row with PrimeraVez set, and the rows that every clinic needs. Names and labels are in Spanish
/// until the first run, which also adds products, services and letters.
/// @param language of the kinds of taxpayer and of error messages
/// @throws StoreError 75 when the folder already holds one of the databases or cannot be written;
///         the folder is left as it was
void createFolder(const QString &folder, store::Language language);

} // namespace startup
