// The picture at the head of letters and of the immunization sheet.
#pragma once

#include "store/session.h"

namespace admin
{

/// Path of the picture in the data folder, whether it is there or not.
QString headerPath(const Sesion &s);

/// Lets the user choose a JPG or BMP and makes it the letterhead: a bitmap as it is, a JPG as the
/// bitmap that the file's name says. What is no picture is refused with a message.
/// @return whether the letterhead was changed
/// @throws StoreError when the data folder cannot be written; the old picture is kept
bool getHeader(Sesion &s);

} // namespace admin
