#include "admin/clinic_data.h"
#include "admin/letterhead.h"
#include "admin/network_path.h"
#include "support/clinic.h"

#include <QDir>
#include <QFile>
#include <QImage>

using namespace Qt::StringLiterals;

namespace
{

QByteArray Contenido(const QString &ruta)
{
    QFile f(ruta);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

void Escribir(const QString &ruta, const QByteArray &contenido)
{
    QFile f(ruta);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write(contenido);
}

class Membrete : public Clinica
{
protected:
    /// A picture of one colour, in a folder of the user's.
    QString dibujo(const QString &nombre, QRgb color)
    {
        QImage imagen(40, 10, QImage::Format_RGB32);
        imagen.fill(color);
        const QString ruta = fotos.filePath(nombre);
        EXPECT_TRUE(imagen.save(ruta));
        return ruta;
    }
    bool obtener(const std::optional<QString> &ruta, const QString &mensaje = {})
    {
        ask.EsperaTexto(u"Letterhead"_s, ruta);
        if (!mensaje.isEmpty())
            ask.Espera(mensaje);
        return ObtenerEncabezado(s);
    }
    QStringList encabezados()
    {
        return QDir(carpeta.path()).entryList({u"encabezado*"_s}, QDir::Files);
    }

    QTemporaryDir fotos;
};

class Red : public Clinica
{
protected:
    Red() { s.carpetaDePrograma = programa.path() + u'/'; }
    bool conectar(const std::optional<QString> &camino, const QString &mensaje = {})
    {
        ask.Espera(u"Critical action"_s);
        ask.EsperaTexto(u"Server Path"_s, camino);
        if (!mensaje.isEmpty())
            ask.Espera(mensaje);
        return ConectarTerminal(s);
    }
    QByteArray ruta() { return Contenido(programa.filePath(u"ruta.txt"_s)); }

    QTemporaryDir programa;
    QTemporaryDir servidor;
};

} // namespace

TEST_F(Membrete, AJpgBecomesTheBitmapThatItsNameSays)
{
    EXPECT_TRUE(obtener(dibujo(u"logo.jpg"_s, qRgb(200, 0, 0))));
    EXPECT_EQ(encabezados(), QStringList{u"Encabezado.bmp"_s});
    EXPECT_TRUE(Contenido(RutaDeEncabezado(s)).startsWith("BM"));
    const QImage imagen(RutaDeEncabezado(s));
    EXPECT_EQ(imagen.size(), QSize(40, 10));
    EXPECT_NEAR(qRed(imagen.pixel(20, 5)), 200, 4);
}

TEST_F(Membrete, ABitmapTakesThePlaceOfTheOldOneWhateverTheCaseOfItsName)
{
    Escribir(carpeta.filePath(u"encabezado.BMP"_s), "old");
    const QString nuevo = dibujo(u"logo.bmp"_s, qRgb(0, 120, 0));
    EXPECT_TRUE(obtener(nuevo));
    EXPECT_EQ(encabezados(), QStringList{u"encabezado.BMP"_s});
    EXPECT_EQ(Contenido(RutaDeEncabezado(s)), Contenido(nuevo));
    // Chosen again from where it lies, it stays whole.
    EXPECT_TRUE(obtener(RutaDeEncabezado(s)));
    EXPECT_EQ(Contenido(RutaDeEncabezado(s)), Contenido(nuevo));
}

TEST_F(Membrete, WhatIsNoPictureLeavesTheOldOne)
{
    EXPECT_TRUE(obtener(dibujo(u"logo.bmp"_s, qRgb(0, 0, 90))));
    const QByteArray antes = Contenido(RutaDeEncabezado(s));

    EXPECT_FALSE(obtener(std::nullopt));
    const QString texto = fotos.filePath(u"texto.jpg"_s);
    Escribir(texto, "no picture");
    const QString cortado = fotos.filePath(u"cortado.bmp"_s);
    Escribir(cortado, antes.left(30));
    const QString otro = dibujo(u"logo.png"_s, qRgb(0, 0, 0));
    for (const QString &malo : {texto, cortado, otro, fotos.filePath(u"falta.jpg"_s)})
        EXPECT_FALSE(obtener(malo, u"not a JPG or BMP"_s)) << malo.toStdString();
    EXPECT_EQ(Contenido(RutaDeEncabezado(s)), antes);
}

TEST_F(Membrete, AFolderThatCannotBeWrittenIsTold)
{
    s.carpetaDeDatos = fotos.filePath(u"gone/"_s);
    EXPECT_THROW(obtener(dibujo(u"logo.bmp"_s, qRgb(0, 0, 90))), ErrorDeAlmacen);
}

TEST_F(Clinica, TheClinicsDataHoldAtOnceWithoutApostrophesAndWithinTheirColumn)
{
    s.morvane->Execute("delete * from veterinaria");
    GuardarDatoDeClinica(s, DatoDeClinica::Nombre, u"L'Arca"_s); // also where the row was lost
    GuardarDatoDeClinica(s, DatoDeClinica::Propietario, u"Eva"_s);
    GuardarDatoDeClinica(s, DatoDeClinica::Direccion, QString(150, u'ñ'));
    GuardarDatoDeClinica(s, DatoDeClinica::Telefonos, u"099 1"_s);
    EXPECT_EQ(Filas(*s.morvane, "select nom, pro, dir, tel from veterinaria"),
              u"L Arca|Eva|"_s + QString(100, u'ñ') + u"|099 1\n"_s);
    EXPECT_EQ(s.clinica.nom, u"L Arca"_s);
    EXPECT_EQ(s.clinica.dir.size(), AnchoDeDato(s, DatoDeClinica::Direccion));
    EXPECT_EQ(s.clinica.tel, u"099 1"_s);
}

TEST_F(Red, OnlyAFolderWithTheMainDatabaseIsTaken)
{
    ask.Espera(u"Critical action"_s, false);
    EXPECT_FALSE(ConectarTerminal(s));
    EXPECT_FALSE(conectar(std::nullopt));
    EXPECT_FALSE(conectar(u"  "_s));
    QDir(servidor.path()).mkdir(u"morvane.mdb"_s); // a folder is no database
    EXPECT_FALSE(conectar(servidor.path(), u"No databases exist"_s));
    EXPECT_EQ(ruta(), QByteArray());

    QDir(servidor.path()).rmdir(u"morvane.mdb"_s);
    Escribir(servidor.filePath(u"Morvane.MDB"_s), "x");
    EXPECT_TRUE(conectar(u' ' + servidor.path() + u"/./"_s, u"restart"_s));
    EXPECT_EQ(ruta(), servidor.path().toUtf8() + '\n');
    EXPECT_EQ(LeerRuta(s.carpetaDePrograma), servidor.path() + u'/');
}

TEST_F(Red, AProgramFolderThatCannotBeWrittenIsTold)
{
    Escribir(servidor.filePath(u"morvane.mdb"_s), "x");
    s.carpetaDePrograma = programa.filePath(u"gone/"_s);
    EXPECT_FALSE(conectar(servidor.path(), u"could not be stored"_s));
}
