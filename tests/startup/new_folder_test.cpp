#include "startup/new_folder.h"

#include "startup/checks.h"
#include "store/schema.h"

#include <QDir>

using namespace Qt::StringLiterals;

namespace
{

struct Carpeta : Clinica {
};

int NumeroDeError(const QString &carpeta)
{
    try {
        CrearCarpeta(carpeta, Idioma::Espanol);
    } catch (const ErrorDeAlmacen &e) {
        EXPECT_TRUE(e.descripcion.endsWith(carpeta)) << e.descripcion.toStdString();
        return e.numero;
    }
    return 0;
}

QStringList Contenido(const QString &carpeta)
{
    return QDir(carpeta).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
}

} // namespace

TEST_F(Carpeta, BringsTheRowsThatNoClinicGoesWithout)
{
    EXPECT_EQ(Filas(*s.morvane, "select Ver, PrimeraVez, contadorcat, contadorarticulo,"
                                " MedidasRevac, MedidasCumple, contadorRSerie, SimboloComprobante5"
                                " from Configuracion"),
              u"554|-1|11|0|4|4|1|T\n");
    EXPECT_EQ(Filas(*s.finanzas, "select idcat, nom, suministro from FLCategorias where idcat < 6"),
              u"1|Alimentos|c\n2|Servicios|n\n3|Vacunas|p\n4|Antiparasitarios|p\n"
              "5|Anticonceptivos|p\n");
    EXPECT_EQ(Filas(*s.clientes, "select id, nom, ali from MLEspecies"),
              u"1|Canino|\n2|Felino|\n3|Equino|\n");
    EXPECT_EQ(Filas(*s.morvane, "select Idr, Nom, Tip, Esp from Regimen where Idr < 17"),
              u"14|Anticonceptivo canino|5|1\n15|Anticonceptivo felino|5|2\n"
              "16|Vac. Can. < 3 meses|3|1\n");
    EXPECT_EQ(Filas(*s.clientes, "select count(*), min(IDSubCategoria), max(IDSubCategoria)"
                                 " from Enciclopedia"),
              u"20|1|20\n");
    EXPECT_EQ(Filas(*s.finanzas, "select ID, Nombre from TiposFiscal"), u"1|NA\n");
    for (Base *base : {s.morvane.get(), s.clientes.get(), s.finanzas.get()})
        EXPECT_EQ(TextosDemasiadoLargos(*base), QString());
    // The next plan of the clinic's own goes on behind the seeded ones.
    s.morvane->Execute("insert into Regimen (Nom) values ('x')");
    EXPECT_EQ(s.morvane->Leer("select max(Idr) from Regimen").toInt(), 20);
}

TEST_F(Carpeta, KnowsTheKindsOfTaxpayerOfTheLanguage)
{
    const QTemporaryDir otra;
    CrearCarpeta(otra.path(), Idioma::Espanol);
    FijarCarpetaDeDatos(s, otra.path());
    Reabrir();
    EXPECT_EQ(Filas(*s.finanzas, "select ID, Nombre from TiposFiscal where ID in (1, 4, 7)"),
              u"1|Consumidor final\n4|Responsable inscripto\n7|Sin categorizar\n");
}

TEST(CrearCarpeta, TouchesNoFolderThatHoldsAClinic)
{
    const QTemporaryDir carpeta;
    QFile ajena(carpeta.filePath(u"FINANZAS.MDB"_s));
    ASSERT_TRUE(ajena.open(QIODevice::WriteOnly));
    ajena.write("kept");
    ajena.close();
    EXPECT_EQ(NumeroDeError(carpeta.path()), ErrorNum::RutaODisco);
    EXPECT_EQ(Contenido(carpeta.path()), QStringList{u"FINANZAS.MDB"_s});
    EXPECT_EQ(QFileInfo(ajena).size(), 4);
}

TEST(CrearCarpeta, LeavesNothingHalfMade)
{
    const QTemporaryDir carpeta;
    // The fifth file cannot be put into its folder, because a file stands there.
    ASSERT_TRUE(QFile(carpeta.filePath(u"reportes"_s)).open(QIODevice::WriteOnly));
    EXPECT_EQ(NumeroDeError(carpeta.path()), ErrorNum::RutaODisco);
    EXPECT_EQ(Contenido(carpeta.path()), QStringList{u"reportes"_s});
    // A folder below a file cannot be made at all.
    EXPECT_EQ(NumeroDeError(carpeta.filePath(u"reportes/nueva"_s)), ErrorNum::RutaODisco);
    EXPECT_EQ(Contenido(carpeta.path()), QStringList{u"reportes"_s});

    EXPECT_TRUE(QFile::remove(carpeta.filePath(u"reportes"_s)));
    CrearCarpeta(carpeta.path(), Idioma::Espanol);
    EXPECT_EQ(Contenido(carpeta.path()).size(), 5); // four files and the folder of the fifth
}
