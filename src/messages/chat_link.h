// A link that opens a client's chat in the browser, with the text filled in.
#pragma once

#include "store/session.h"

#include <QUrl>

namespace messages
{

/// The first of a client's mobile numbers in the form the chat service expects: country code and
/// number, digits only. A number without a country code gets @p country and loses its leading
/// zeros.
/// @param telephones the mobile field, which may hold several numbers
/// @return "" when it is not a valid number
QString numberForChat(const QString &telephones, const QString &country);

/// Whether the client has a mobile number that can be used for a chat.
bool hasChat(Sesion &s, int idc);

/// Builds the link. A number without a country code gets the one in the clinic's setting
/// `chat/pais`, for which the user is asked the first time.
/// @return an invalid URL when the client has no usable number; nullopt when the user gave no code
std::optional<QUrl> chatLink(Sesion &s, int idc, const QString &text);

} // namespace messages
