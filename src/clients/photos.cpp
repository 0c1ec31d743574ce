#include "clients/photos.h"

#include "store/data_folder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QSaveFile>

using namespace clients;
using namespace Qt::StringLiterals;

namespace
{
// In pixels: sharp on paper at 60 mm, and a bitmap of less than 2 MB.
constexpr int LongerSide = 800;
} // namespace

QString clients::photoFile(const Sesion &s, int idm)
{
    return store::pathUnder(s.dataFolder, u"mascotas/fot/"_s + QString::number(idm) + u".bmp"_s);
}

void clients::savePhoto(Sesion &s, int idm, const QImage &image)
{
    const QString ruta = photoFile(s, idm);
    QImage photo = image;
    if (std::max(photo.width(), photo.height()) > LongerSide)
        photo = photo.scaled(LongerSide, LongerSide, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    QSaveFile file(ruta);
    if (photo.isNull() || !QDir().mkpath(QFileInfo(ruta).path()) || !file.open(QIODevice::WriteOnly)
        || !photo.convertToFormat(QImage::Format_RGB32).save(&file, "BMP") || !file.flush()
        || !file.commit())
        throw store::StoreError(store::ErrorNumber::PathOrDisk, ruta);
    s.clientes->Execute("update mascotas set fot = -1 where idm = ?", idm);
}

void clients::removePhoto(Sesion &s, int idm)
{
    s.clientes->Execute("update mascotas set fot = 0 where idm = ?", idm);
    QFile::remove(photoFile(s, idm));
}
