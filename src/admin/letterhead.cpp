#include "admin/letterhead.h"

#include "store/data_folder.h"
#include "texts/admin.h"

#include <QBuffer>
#include <QFile>
#include <QImageReader>
#include <QSaveFile>

using namespace admin;
using namespace Qt::StringLiterals;

namespace
{

/// The JPG and BMP files, in the format of Qt's file dialogs.
constexpr QStringView Filter = u"JPG, BMP (*.bmp *.jpg *.jpeg *.BMP *.JPG *.JPEG)";

/// The file as a bitmap; empty when it is neither a JPG nor a BMP.
QByteArray asBitmap(const QString &file)
{
    QFile f(file);
    if (!f.open(QIODevice::ReadOnly))
        return {};
    const QByteArray content = f.readAll();
    QBuffer entry;
    entry.setData(content);
    QImageReader reader(&entry);
    reader.setAutoTransform(true); // photographs record their orientation
    const QByteArray format = reader.format();
    if (format != "bmp" && format != "jpeg")
        return {};
    const QImage image = reader.read();
    if (image.isNull())
        return {};
    if (format == "bmp")
        return content;
    QBuffer exit;
    exit.open(QIODevice::WriteOnly);
    return image.save(&exit, "BMP") ? exit.data() : QByteArray();
}

} // namespace

QString admin::headerPath(const Sesion &s)
{
    return store::pathUnder(s.dataFolder, u"Encabezado.bmp"_s);
}

bool admin::getHeader(Sesion &s)
{
    const auto chosen =
        s.dialogos.ElegirArchivo(s(text::SettingsClinicLetterhead), Filter.toString());
    if (!chosen || chosen->isEmpty())
        return false;
    const QByteArray image = asBitmap(*chosen);
    if (image.isEmpty()) {
        s.dialogos.Mensaje(s(text::LetterheadUnreadable));
        return false;
    }
    QSaveFile f(headerPath(s));
    if (!f.open(QIODevice::WriteOnly) || f.write(image) != image.size() || !f.flush()
        || !f.commit())
        throw store::StoreError(store::ErrorNumber::PathOrDisk,
                                f.fileName() + u": "_s + f.errorString());
    return true;
}
