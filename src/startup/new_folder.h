// Making a new data folder.
#pragma once

#include "store/texts.h"

#include <QString>

/// Makes the five databases in a folder, which may exist: tables, indexes, the settings row with
/// PrimeraVez set and the rows that no clinic goes without. Names and labels are in Spanish until
/// the first run, which also adds products, services and letters.
/// @param idioma of the kinds of taxpayer and of what a failure says
/// @throws ErrorDeAlmacen 75 when the folder holds one of the databases already or cannot be
///         written; then it is as it was
void CrearCarpeta(const QString &carpeta, Idioma idioma);
