// The program's pictures by their given names, drawn in the colours of the theme.
#pragma once

#include <QIcon>
#include <QPixmap>
#include <QString>

namespace ui
{

/// How a picture is coloured: as an icon on a window or on the board's rail, or as a scene, whose
/// light is light and whose shadows are dark by night as well.
enum class Tone { Normal, OnFrame, Scene };

/// A picture that is sharp at every size and scale; empty when there is none of that name.
QIcon namedIcon(const QString &name, Tone tone = Tone::Normal);

/// One rendering of a picture, also of one that is no square.
QPixmap Image(const QString &name, QSize size, qreal scale, Tone tone = Tone::Normal);

bool imageExists(const QString &name);

} // namespace ui
