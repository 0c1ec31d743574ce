// The parts of a mail in their wire format, safe whatever names, subjects and texts contain.
#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>

namespace messages
{

/// A header value. Control characters become spaces, so that no header line can be injected; text
/// beyond plain ASCII becomes encoded words (RFC 2047), folded at 75 characters.
QByteArray headerValue(const QString &text);

/// The valid addresses of a text that may hold several, separated by commas or semicolons. Valid
/// are those with one at sign, text on both sides of it and no character that could end an address
/// early.
QStringList validAddresses(const QString &text);

/// An address preceded by a name, for a header. @param address one returned by validAddresses
QByteArray addressWithName(const QString &name, const QString &address);

/// Day and time in the format of mail headers (RFC 5322), with the UTC offset of @p moment.
QByteArray mailDate(const QDateTime &moment);

/// A text as quoted-printable (RFC 2045): plain ASCII, lines of 76 characters at most.
QByteArray mailText(const QString &text);

} // namespace messages
