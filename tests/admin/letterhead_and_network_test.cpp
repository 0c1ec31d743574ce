#include "admin/clinic_data.h"
#include "admin/letterhead.h"
#include "admin/network_path.h"
#include "support/clinic.h"

#include <QDir>
#include <QFile>
#include <QImage>

using namespace admin;
using namespace Qt::StringLiterals;

namespace
{

QByteArray contentOf(const QString &ruta)
{
    QFile f(ruta);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

void write(const QString &ruta, const QByteArray &content)
{
    QFile f(ruta);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write(content);
}

class Letterhead : public Clinic
{
protected:
    /// A plain-coloured picture in the user's folder.
    QString dibujo(const QString &name, QRgb color)
    {
        QImage image(40, 10, QImage::Format_RGB32);
        image.fill(color);
        const QString ruta = photos.filePath(name);
        EXPECT_TRUE(image.save(ruta));
        return ruta;
    }
    bool get(const std::optional<QString> &ruta, const QString &message = {})
    {
        ask.expectText(u"Letterhead"_s, ruta);
        if (!message.isEmpty())
            ask.wait(message);
        return getHeader(s);
    }
    QStringList headers() { return QDir(folder.path()).entryList({u"encabezado*"_s}, QDir::Files); }

    QTemporaryDir photos;
};

class Network : public Clinic
{
protected:
    Network() { s.programFolder = program.path() + u'/'; }
    bool connect(const std::optional<QString> &path, const QString &message = {})
    {
        ask.wait(u"Critical action"_s);
        ask.expectText(u"Server Path"_s, path);
        if (!message.isEmpty())
            ask.wait(message);
        return connectTerminal(s);
    }
    QByteArray ruta() { return contentOf(program.filePath(u"ruta.txt"_s)); }

    QTemporaryDir program;
    QTemporaryDir server;
};

} // namespace

TEST_F(Letterhead, AJpgBecomesTheBitmapThatItsNameSays)
{
    EXPECT_TRUE(get(dibujo(u"logo.jpg"_s, qRgb(200, 0, 0))));
    EXPECT_EQ(headers(), QStringList{u"Encabezado.bmp"_s});
    EXPECT_TRUE(contentOf(headerPath(s)).startsWith("BM"));
    const QImage image(headerPath(s));
    EXPECT_EQ(image.size(), QSize(40, 10));
    EXPECT_NEAR(qRed(image.pixel(20, 5)), 200, 4);
}

TEST_F(Letterhead, ABitmapTakesThePlaceOfTheOldOneWhateverTheCaseOfItsName)
{
    write(folder.filePath(u"encabezado.BMP"_s), "old");
    const QString newOne = dibujo(u"logo.bmp"_s, qRgb(0, 120, 0));
    EXPECT_TRUE(get(newOne));
    EXPECT_EQ(headers(), QStringList{u"encabezado.BMP"_s});
    EXPECT_EQ(contentOf(headerPath(s)), contentOf(newOne));
    // Choosing the letterhead itself leaves it intact.
    EXPECT_TRUE(get(headerPath(s)));
    EXPECT_EQ(contentOf(headerPath(s)), contentOf(newOne));
}

TEST_F(Letterhead, WhatIsNoPictureLeavesTheOldOne)
{
    EXPECT_TRUE(get(dibujo(u"logo.bmp"_s, qRgb(0, 0, 90))));
    const QByteArray before = contentOf(headerPath(s));

    EXPECT_FALSE(get(std::nullopt));
    const QString text = photos.filePath(u"texto.jpg"_s);
    write(text, "no picture");
    const QString cut = photos.filePath(u"cortado.bmp"_s);
    write(cut, before.left(30));
    const QString other = dibujo(u"logo.png"_s, qRgb(0, 0, 0));
    for (const QString &bad : {text, cut, other, photos.filePath(u"falta.jpg"_s)})
        EXPECT_FALSE(get(bad, u"not a JPG or BMP"_s)) << bad.toStdString();
    EXPECT_EQ(contentOf(headerPath(s)), before);
}

TEST_F(Letterhead, AFolderThatCannotBeWrittenIsTold)
{
    s.dataFolder = photos.filePath(u"gone/"_s);
    EXPECT_THROW(get(dibujo(u"logo.bmp"_s, qRgb(0, 0, 90))), store::StoreError);
}

TEST_F(Clinic, TheClinicsDataHoldAtOnceWithoutApostrophesAndWithinTheirColumn)
{
    s.morvane->Execute("delete * from veterinaria");
    saveClinicDatum(s, ClinicDatum::Name, u"L'Arca"_s); // even if the row was lost
    saveClinicDatum(s, ClinicDatum::Owner, u"Eva"_s);
    saveClinicDatum(s, ClinicDatum::Address, QString(150, u'ñ'));
    saveClinicDatum(s, ClinicDatum::Telephones, u"099 1"_s);
    EXPECT_EQ(allRows(*s.morvane, "select nom, pro, dir, tel from veterinaria"),
              u"L Arca|Eva|"_s + QString(100, u'ñ') + u"|099 1\n"_s);
    EXPECT_EQ(s.clinic.nom, u"L Arca"_s);
    EXPECT_EQ(s.clinic.dir.size(), datumWidth(s, ClinicDatum::Address));
    EXPECT_EQ(s.clinic.tel, u"099 1"_s);
}

TEST_F(Network, OnlyAFolderWithTheMainDatabaseIsTaken)
{
    ask.wait(u"Critical action"_s, false);
    EXPECT_FALSE(connectTerminal(s));
    EXPECT_FALSE(connect(std::nullopt));
    EXPECT_FALSE(connect(u"  "_s));
    QDir(server.path()).mkdir(u"morvane.mdb"_s); // a folder is not a database
    EXPECT_FALSE(connect(server.path(), u"No databases exist"_s));
    EXPECT_EQ(ruta(), QByteArray());

    QDir(server.path()).rmdir(u"morvane.mdb"_s);
    write(server.filePath(u"Morvane.MDB"_s), "x");
    EXPECT_TRUE(connect(u' ' + server.path() + u"/./"_s, u"restart"_s));
    EXPECT_EQ(ruta(), server.path().toUtf8() + '\n');
    EXPECT_EQ(store::readPath(s.programFolder), server.path() + u'/');
}

TEST_F(Network, AProgramFolderThatCannotBeWrittenIsTold)
{
    write(server.filePath(u"morvane.mdb"_s), "x");
    s.programFolder = program.filePath(u"gone/"_s);
    EXPECT_FALSE(connect(server.path(), u"could not be stored"_s));
}
