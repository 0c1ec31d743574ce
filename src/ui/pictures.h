// The program's pictures by name, drawn in the colours of the theme.
#pragma once

#include <QIcon>
#include <QPixmap>
#include <QString>

namespace ui
{

/// How a picture is coloured: as an icon on a window, as one on the board's rail, or as a scene,
/// which keeps its light and dark parts in the dark theme too.
enum class Tone { Normal, OnFrame, Scene };

/// An icon that is sharp at every size and scale; null when there is no picture of that name.
QIcon namedIcon(const QString &name, Tone tone = Tone::Normal);

/// Renders a picture, which need not be square.
/// @param size device-independent pixels @param scale device pixels for each of them
QPixmap Image(const QString &name, QSize size, qreal scale, Tone tone = Tone::Normal);

/// Whether there is a picture of that name.
bool imageExists(const QString &name);

} // namespace ui
