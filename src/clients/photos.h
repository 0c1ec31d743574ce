// The photograph of a patient, kept as mascotas\fot\<idm>.bmp.
#pragma once

#include "store/session.h"

class QImage;

namespace clients
{

/// Path of the patient's photograph, whether it exists or not.
QString photoFile(const Sesion &s, int idm);
/// Stores an image as the patient's photograph, scaled down to at most 1600 pixels a side, and
/// marks the patient as having one.
/// @throws StoreError when the file cannot be written; the previous photograph is kept then
void savePhoto(Sesion &s, int idm, const QImage &image);
/// Deletes the photograph and the patient's mark.
/// @throws StoreError
void removePhoto(Sesion &s, int idm);

} // namespace clients
