// Report runs: a definition from the folder reportes over a scratch table.
#pragma once

#include "printing/html_document.h"
#include "store/session.h"

namespace printing
{

/// Fills a definition with the rows of the scratch tables as they stand: the clinic's own in the
/// folder reportes of its data, `name` with or without the language code, or the one that the
/// program brings.
/// @throws StoreError 53 when there is no definition, 3075 with the line that cannot be read
std::unique_ptr<DocumentHtml> runReport(Sesion &s, const QString &name);

} // namespace printing
