// A letter: a text as it was composed, under the clinic's letterhead where the settings say so.
#pragma once

#include "printing/html_document.h"
#include "store/session.h"

/// What a letter is called in print queues and as a file.
QString TituloDeCarta(const QString &motivo, const QString &destinatario);

/// @param texto plain text; its line breaks are kept
std::unique_ptr<DocumentoHtml> ComponerCarta(Sesion &s, const QString &titulo,
                                             const QString &texto);
