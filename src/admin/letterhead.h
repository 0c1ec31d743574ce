// The picture at the head of letters and immunization sheets.
#pragma once

#include "store/session.h"

namespace admin
{

/// Path of the picture in the data folder, whether it exists or not.
QString headerPath(const Sesion &s);

/// Lets the user choose a JPG or BMP file as the letterhead. A bitmap is copied unchanged; a JPG is
/// converted, because the file's name promises a bitmap. Anything else is refused with a message.
/// @return whether the letterhead was changed
/// @throws StoreError when the data folder cannot be written; the old picture is kept then
bool getHeader(Sesion &s);

} // namespace admin
