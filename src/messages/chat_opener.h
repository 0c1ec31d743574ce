// What the buttons that open a chat share.
#pragma once

#include "store/session.h"

namespace ui
{

class HelpLine;

} // namespace ui

class QUrl;

namespace messages
{

/// Opens a link outside the program. Tests put their own.
using LinkOpener = std::function<bool(const QUrl &)>;

/// The real one: the browser.
LinkOpener browser();

/// Opens a client's chat with a text in it; what prevents it is told on @p help.
void openChat(Sesion &s, const LinkOpener &open, ui::HelpLine &help, int idc, const QString &text);

} // namespace messages
