// The photograph of a patient, kept as mascotas\fot\<idm>.bmp.
#pragma once

#include "store/session.h"

class QImage;

namespace clients
{

QString photoFile(const Sesion &s, int idm);
/// Stores a picture as the patient's photograph, made smaller where it is larger than 1600 pixels
/// a side, and marks the patient. @throws StoreError when it cannot be written; the former one
/// is still there then
void savePhoto(Sesion &s, int idm, const QImage &image);
void removePhoto(Sesion &s, int idm);

} // namespace clients
