// A link that opens a client's chat with a finished text in the browser.
#pragma once

#include "store/session.h"

#include <QUrl>

/// The client's mobile number as the chat service wants it: country code and number, digits only;
/// "" when there is no mobile number that could be one. A number without a country code gets the
/// one of this machine's setting `chat/pais`.
QString NumeroParaChat(const Sesion &s, const QString &telefonos);

/// @return an invalid address when the client has no mobile number
QUrl EnlaceDeChat(Sesion &s, int idc, const QString &texto);
