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

/// Opens a link outside the program and returns whether that worked. Tests pass their own.
using LinkOpener = std::function<bool(const QUrl &)>;

/// The real opener: the system's browser.
LinkOpener browser();

/// Opens a client's chat with the text filled in. If it cannot, the reason is shown on @p help.
void openChat(Sesion &s, const LinkOpener &open, ui::HelpLine &help, int idc, const QString &text);

} // namespace messages
