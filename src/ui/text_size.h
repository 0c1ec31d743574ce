// How large everything is drawn on this machine, for eyes and screens that need it larger.
#pragma once

#include "store/session.h"

#include <array>

namespace ui
{

/// What can be chosen, in percent of the usual size.
inline constexpr std::array TextSizes{100, 115, 125, 150, 175};

/// The size chosen on this machine: one of TextSizes, 100 where none or another was written.
int textSize(const Sesion &s);
/// Keeps it for the next start of the program. @throws StoreError 75 when it cannot be written
void saveTextSize(const Sesion &s, int percent);

/// Draws everything in the size chosen. Has to be called before there is a window or an
/// application; a QT_SCALE_FACTOR of the user's own is left alone.
/// @param programFolder ends in a slash
void applyTextSize(const QString &programFolder);

} // namespace ui
