// Reports: a definition from the folder reportes, filled from a scratch table.
#pragma once

#include "printing/html_document.h"
#include "store/session.h"

namespace printing
{

/// Fills a report definition with the current rows of the scratch tables. The clinic's own
/// definition, in the folder reportes of its data and with or without the language code after
/// @p name, comes before the one that ships with the program.
/// @throws StoreError 53 when there is no definition, 3075 with the line that cannot be read
std::unique_ptr<DocumentHtml> runReport(Sesion &s, const QString &name);

} // namespace printing
