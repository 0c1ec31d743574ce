#include "admin/letterhead.h"

#include "store/data_folder.h"

#include <QBuffer>
#include <QFile>
#include <QImageReader>
#include <QSaveFile>

using namespace Qt::StringLiterals;

namespace
{

enum Texto { Membrete = 9568, NoEsImagen = 9573 };

/// "JPG, BMP |*.bmp;*.jpg", caption and patterns, as this platform's boxes want it.
constexpr QStringView filtro = u"JPG, BMP (*.bmp *.jpg *.jpeg *.BMP *.JPG *.JPEG)";

/// The file as a bitmap; empty when it is no picture of the two kinds.
QByteArray ComoMapaDeBits(const QString &archivo)
{
    QFile f(archivo);
    if (!f.open(QIODevice::ReadOnly))
        return {};
    const QByteArray contenido = f.readAll();
    QBuffer entrada;
    entrada.setData(contenido);
    QImageReader lector(&entrada);
    lector.setAutoTransform(true); // photographs tell which side is up
    const QByteArray formato = lector.format();
    if (formato != "bmp" && formato != "jpeg")
        return {};
    const QImage imagen = lector.read();
    if (imagen.isNull())
        return {};
    if (formato == "bmp")
        return contenido;
    QBuffer salida;
    salida.open(QIODevice::WriteOnly);
    return imagen.save(&salida, "BMP") ? salida.data() : QByteArray();
}

} // namespace

QString RutaDeEncabezado(const Sesion &s)
{
    return RutaBajo(s.carpetaDeDatos, u"Encabezado.bmp"_s);
}

bool ObtenerEncabezado(Sesion &s)
{
    const auto elegido = s.dialogos.ElegirArchivo(s(Membrete), filtro.toString());
    if (!elegido || elegido->isEmpty())
        return false;
    const QByteArray imagen = ComoMapaDeBits(*elegido);
    if (imagen.isEmpty()) {
        s.dialogos.Mensaje(s(NoEsImagen));
        return false;
    }
    QSaveFile f(RutaDeEncabezado(s));
    if (!f.open(QIODevice::WriteOnly) || f.write(imagen) != imagen.size() || !f.flush()
        || !f.commit())
        throw ErrorDeAlmacen(ErrorNum::RutaODisco, f.fileName() + u": "_s + f.errorString());
    return true;
}
