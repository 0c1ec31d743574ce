// The parts of a mail as they go over the line, safe whatever stands in names, subjects and texts.
#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>

/// A header value: control characters become blanks, so that no line can be added; what is not
/// plain ASCII is put in encoded words (RFC 2047), folded at 75 characters.
QByteArray ValorDeCabecera(const QString &texto);

/// The addresses of a box that may hold several, parted by commas or semicolons: those with one at
/// sign, text on both sides and nothing that could end an address early.
QStringList DireccionesValidas(const QString &texto);

/// Address with a name before it. @param direccion one of DireccionesValidas
QByteArray DireccionConNombre(const QString &nombre, const QString &direccion);

/// Day and time as mails write them (RFC 5322), with the offset of the time given.
QByteArray FechaDeCorreo(const QDateTime &momento);

/// A text as quoted-printable (RFC 2045): lines of plain ASCII, 76 characters at most.
QByteArray TextoDeCorreo(const QString &texto);
