// What the buttons that open a chat share.
#pragma once

#include "store/session.h"

class LineaDeAyuda;
class QUrl;

/// Opens a link outside the program. Tests put their own.
using AbridorDeEnlaces = std::function<bool(const QUrl &)>;

/// The real one: the browser.
AbridorDeEnlaces Navegador();

/// Opens a client's chat with a text in it; what prevents it is told on @p ayuda.
void AbrirChat(Sesion &s, const AbridorDeEnlaces &abrir, LineaDeAyuda &ayuda, int idc,
               const QString &texto);
