// Letters: a finished text, under the clinic's letterhead if the settings ask for it.
#pragma once

#include "printing/html_document.h"
#include "store/session.h"

namespace printing
{

/// The title of a letter, used in print queues and for its file name.
QString letterTitle(const QString &reason, const QString &addressee);

/// Makes a letter. @param text plain text, whose line breaks are kept
std::unique_ptr<DocumentHtml> composeLetter(Sesion &s, const QString &title, const QString &text);

} // namespace printing
