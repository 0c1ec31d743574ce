// A letter: a text as it was composed, under the clinic's letterhead where the settings say so.
#pragma once

#include "printing/html_document.h"
#include "store/session.h"

namespace printing
{

/// What a letter is called in print queues and as a file.
QString letterTitle(const QString &reason, const QString &addressee);

/// @param text plain text; its line breaks are kept
std::unique_ptr<DocumentHtml> composeLetter(Sesion &s, const QString &title, const QString &text);

} // namespace printing
