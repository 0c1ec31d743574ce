#include "clients/photos.h"

#include "store/data_folder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QSaveFile>

using namespace Qt::StringLiterals;

namespace
{
constexpr int LadoMayor = 1600;
} // namespace

QString ArchivoDeFoto(const Sesion &s, int idm)
{
    return RutaBajo(s.carpetaDeDatos, u"mascotas/fot/"_s + QString::number(idm) + u".bmp"_s);
}

void GuardarFoto(Sesion &s, int idm, const QImage &imagen)
{
    const QString ruta = ArchivoDeFoto(s, idm);
    QImage foto = imagen;
    if (std::max(foto.width(), foto.height()) > LadoMayor)
        foto = foto.scaled(LadoMayor, LadoMayor, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    QSaveFile archivo(ruta);
    if (foto.isNull() || !QDir().mkpath(QFileInfo(ruta).path())
        || !archivo.open(QIODevice::WriteOnly)
        || !foto.convertToFormat(QImage::Format_RGB32).save(&archivo, "BMP") || !archivo.flush()
        || !archivo.commit())
        throw ErrorDeAlmacen(ErrorNum::RutaODisco, ruta);
    s.clientes->Execute("update mascotas set fot = -1 where idm = ?", idm);
}

void QuitarFoto(Sesion &s, int idm)
{
    s.clientes->Execute("update mascotas set fot = 0 where idm = ?", idm);
    QFile::remove(ArchivoDeFoto(s, idm));
}
