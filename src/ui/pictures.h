// The program's pictures by their given names, drawn in the colours of the theme.
#pragma once

#include <QIcon>
#include <QPixmap>
#include <QString>

/// On what a picture lies.
enum class Tono { Normal, SobreMarco };

/// A picture that is sharp at every size and scale; empty when there is none of that name.
QIcon Icono(const QString &nombre, Tono tono = Tono::Normal);

/// The same for a picture that is no square, such as those of the splash, filling @p tamano.
QPixmap Imagen(const QString &nombre, QSize tamano, qreal escala);

bool ExisteImagen(const QString &nombre);
