// The program's pictures by their given names, drawn in the colours of the theme.
#pragma once

#include <QIcon>
#include <QPixmap>
#include <QString>

/// How a picture is coloured: as an icon on a window or on the board's rail, or as a scene, whose
/// light is light and whose shadows are dark by night as well.
enum class Tono { Normal, SobreMarco, Escena };

/// A picture that is sharp at every size and scale; empty when there is none of that name.
QIcon Icono(const QString &nombre, Tono tono = Tono::Normal);

/// One rendering of a picture, also of one that is no square.
QPixmap Imagen(const QString &nombre, QSize tamano, qreal escala, Tono tono = Tono::Normal);

bool ExisteImagen(const QString &nombre);
