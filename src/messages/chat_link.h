// A link that opens a client's chat with a finished text in the browser.
#pragma once

#include "store/session.h"

#include <QUrl>

namespace messages
{

/// The first of a client's mobile numbers as the chat service wants it: country code and number,
/// digits only; "" when it is none. A number without a country code gets @p country, its leading
/// zeros left out.
QString numberForChat(const QString &telephones, const QString &country);

/// Whether the client has a mobile number to chat with.
bool hasChat(Sesion &s, int idc);

/// The link. Where a number stands without a country code, the one of the clinic's setting
/// `chat/pais` is taken; the user is asked for it once.
/// @return an invalid address when the client's is no number to write to; nullopt when the user
/// gave no code
std::optional<QUrl> chatLink(Sesion &s, int idc, const QString &text);

} // namespace messages
