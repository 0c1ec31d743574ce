// The photograph of a patient, kept as mascotas\fot\<idm>.bmp.
#pragma once

#include "store/session.h"

class QImage;

QString ArchivoDeFoto(const Sesion &s, int idm);
/// Stores a picture as the patient's photograph, made smaller where it is larger than 1600 pixels
/// a side, and marks the patient. @throws ErrorDeAlmacen when it cannot be written; the former one
/// is still there then
void GuardarFoto(Sesion &s, int idm, const QImage &imagen);
void QuitarFoto(Sesion &s, int idm);
