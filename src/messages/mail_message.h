// The parts of a mail as they go over the line, safe whatever stands in names, subjects and texts.
#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>

namespace messages
{

/// A header value: control characters become blanks, so that no line can be added; what is not
/// plain ASCII is put in encoded words (RFC 2047), folded at 75 characters.
QByteArray headerValue(const QString &text);

/// The addresses of a box that may hold several, parted by commas or semicolons: those with one at
/// sign, text on both sides and nothing that could end an address early.
QStringList validAddresses(const QString &text);

/// Address with a name before it. @param address one of validAddresses
QByteArray addressWithName(const QString &name, const QString &address);

/// Day and time as mails write them (RFC 5322), with the offset of the time given.
QByteArray mailDate(const QDateTime &moment);

/// A text as quoted-printable (RFC 2045): lines of plain ASCII, 76 characters at most.
QByteArray mailText(const QString &text);

} // namespace messages
