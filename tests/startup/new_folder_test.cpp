#include "startup/new_folder.h"

#include "startup/checks.h"
#include "store/schema.h"

#include <QDir>

using namespace startup;
using namespace Qt::StringLiterals;

namespace
{

struct Folder : Clinic {
};

int errorNumber(const QString &folder)
{
    try {
        createFolder(folder, store::Language::Spanish);
    } catch (const store::StoreError &e) {
        EXPECT_TRUE(e.description.endsWith(folder)) << e.description.toStdString();
        return e.number;
    }
    return 0;
}

QStringList contentOf(const QString &folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
}

} // namespace

TEST_F(Folder, BringsTheRowsThatNoClinicGoesWithout)
{
    EXPECT_EQ(allRows(*s.morvane,
                      "select Ver, PrimeraVez, contadorcat, contadorarticulo,"
                      " MedidasRevac, MedidasCumple, contadorRSerie, SimboloComprobante5"
                      " from Configuracion"),
              u"554|-1|11|0|4|4|1|T\n");
    EXPECT_EQ(
        allRows(*s.finanzas,
                "select idcat, nom, suministro from FLCategorias where idcat < 6 order by idcat"),
        u"1|Alimentos|c\n2|Servicios|n\n3|Vacunas|p\n4|Antiparasitarios|p\n"
        "5|Anticonceptivos|p\n");
    EXPECT_EQ(allRows(*s.clientes, "select id, nom, ali from MLEspecies"),
              u"1|Canino|\n2|Felino|\n3|Equino|\n");
    EXPECT_EQ(
        allRows(*s.morvane, "select Idr, Nom, Tip, Esp from Regimen where Idr < 17 order by Idr"),
        u"14|Anticonceptivo canino|5|1\n15|Anticonceptivo felino|5|2\n"
        "16|Vac. Can. < 3 meses|3|1\n");
    EXPECT_EQ(allRows(*s.clientes, "select count(*), min(IDSubCategoria), max(IDSubCategoria)"
                                   " from Enciclopedia"),
              u"20|1|20\n");
    EXPECT_EQ(allRows(*s.finanzas, "select ID, Nombre from TiposFiscal"), u"1|NA\n");
    for (Base *base : {s.morvane.get(), s.clientes.get(), s.finanzas.get()})
        EXPECT_EQ(overlongTexts(*base), QString());
    // The clinic's own plans continue the numbering of the seeded ones.
    s.morvane->Execute("insert into Regimen (Nom) values ('x')");
    EXPECT_EQ(s.morvane->read("select max(Idr) from Regimen").toInt(), 20);
}

TEST_F(Folder, KnowsTheKindsOfTaxpayerOfTheLanguage)
{
    const QTemporaryDir other;
    createFolder(other.path(), store::Language::Spanish);
    store::setDataFolder(s, other.path());
    reopen();
    EXPECT_EQ(allRows(*s.finanzas,
                      "select ID, Nombre from TiposFiscal where ID in (1, 4, 7) order by ID"),
              u"1|Consumidor final\n4|Responsable inscripto\n7|Sin categorizar\n");
}

TEST(createFolder, TouchesNoFolderThatHoldsAClinic)
{
    const QTemporaryDir folder;
    QFile foreign(folder.filePath(u"FINANZAS.MDB"_s));
    ASSERT_TRUE(foreign.open(QIODevice::WriteOnly));
    foreign.write("kept");
    foreign.close();
    EXPECT_EQ(errorNumber(folder.path()), store::ErrorNumber::PathOrDisk);
    EXPECT_EQ(contentOf(folder.path()), QStringList{u"FINANZAS.MDB"_s});
    EXPECT_EQ(QFileInfo(foreign).size(), 4);
}

TEST(createFolder, LeavesNothingHalfMade)
{
    const QTemporaryDir folder;
    // The fifth file cannot be created, because its folder's name is taken by a file.
    ASSERT_TRUE(QFile(folder.filePath(u"reportes"_s)).open(QIODevice::WriteOnly));
    EXPECT_EQ(errorNumber(folder.path()), store::ErrorNumber::PathOrDisk);
    EXPECT_EQ(contentOf(folder.path()), QStringList{u"reportes"_s});
    // A folder below a file cannot be created at all.
    EXPECT_EQ(errorNumber(folder.filePath(u"reportes/nueva"_s)), store::ErrorNumber::PathOrDisk);
    EXPECT_EQ(contentOf(folder.path()), QStringList{u"reportes"_s});

    EXPECT_TRUE(QFile::remove(folder.filePath(u"reportes"_s)));
    createFolder(folder.path(), store::Language::Spanish);
    EXPECT_EQ(contentOf(folder.path()).size(), 5); // four files, and the fifth one's folder
}
