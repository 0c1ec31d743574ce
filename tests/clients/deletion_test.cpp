#include "clients/deletion.h"
#include "support/clinic.h"
#include "texts/clients.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>

using namespace clients;
using namespace Qt::StringLiterals;

namespace
{

// Client 1 with patients 1 and 2, client 2 with patient 12.
class Deletion : public Clinic
{
protected:
    Deletion()
    {
        for (const int idc : {1, 2})
            s.clientes->Execute("insert into clientes (idc, ayn) values (?, 'Ana')", idc);
        for (const int idm : {1, 2, 12})
            s.clientes->Execute("insert into mascotas (idm, idc, nom) values (?, ?, 'Luna')", idm,
                                idm == 12 ? 2 : 1);
        s.user.ut = 2;
    }
    void fileOf(const QString &name)
    {
        const QString ruta = folder.path() + u"/mascotas/"_s + name;
        EXPECT_TRUE(QDir().mkpath(QFileInfo(ruta).path()));
        EXPECT_TRUE(QFile(ruta).open(QIODevice::WriteOnly));
    }
    QString files()
    {
        QStringList names;
        for (QDirIterator i(folder.path() + u"/mascotas"_s, QDir::Files,
                            QDirIterator::Subdirectories);
             i.hasNext();) {
            const QFileInfo file = i.nextFileInfo();
            names << file.dir().dirName().toLower() + u'/' + file.fileName();
        }
        names.sort();
        return names.join(u' ');
    }
    QString remaining()
    {
        return allRows(*s.clientes, "select idc from clientes order by idc")
               + allRows(*s.clientes, "select idm from mascotas order by idm");
    }
    // Deletes, expecting this text to be asked or shown.
    bool Client(int idc, int text = 3, bool si = true)
    {
        ask.wait(s(text), si);
        return deleteClient(s, idc);
    }
    bool Patient(int idm, int text = 3, bool si = true)
    {
        ask.wait(s(text), si);
        return deletePatient(s, idm);
    }
    void sql(const std::string &order) { s.clientes->Execute(order); }
};

} // namespace

TEST_F(Deletion, RefusalsComeInOrderAndDeleteNothing)
{
    sql("update clientes set obra = 1, deuda = -1 where idc = 1");
    s.user.ut = 1;
    EXPECT_FALSE(Client(1, 1));
    EXPECT_FALSE(Patient(1, 1));
    s.user.ut = 2;
    EXPECT_FALSE(Client(1, 2260)); // checked before the debt
    sql("update clientes set obra = 2 where idc = 1");
    EXPECT_FALSE(Client(1, 2260));
    sql("update clientes set obra = 3 where idc = 1");
    EXPECT_FALSE(Client(1, 2261));
    EXPECT_FALSE(Client(2, 3, false));
    EXPECT_FALSE(Patient(1, 3, false));
    EXPECT_TRUE(Client(99, 9418)); // gone already
    EXPECT_TRUE(Patient(99, 9419));
    EXPECT_EQ(remaining(), u"1\n2\n1\n2\n12\n"_s);
}

TEST_F(Deletion, APatientGoesWithItsRowsAndThoseOfOthersStay)
{
    std::vector<std::string> tables{"ArtPlan",   "MAuri",   "MAhemograma", "MAbio",
                                    "MAcultivo", "MAcopro", "Minter",      "MHospedaje"};
    for (const std::string &table : tables)
        sql("insert into " + table + " (idm) select idm from mascotas where idc = 1");
    for (const auto &[table, key] :
         {std::pair{"MEco", "ideco"}, {"MClinica", "idclinica"}, {"MRayos", "idray"}}) {
        sql(std::string("insert into ") + table + " (idm, " + key
            + ") select idm, idm from mascotas where idc = 1");
        tables.push_back(table);
    }
    sql("insert into consumo (idm, idcat) values (1, 1)");
    int id = 0;
    for (const int tip : {41, -41, -42, -43, -46, -47, -50, -51, -70, -71, -72, -100})
        s.morvane->Execute("insert into TareasAgenda (id, tip, ida) values (?, ?, 1)", ++id, tip);
    s.morvane->Execute("insert into TareasAgenda (id, tip, ida) values (50, 41, 2)");
    s.Alarmas = {{QTime(10, 0), 41, false, 1},
                 {QTime(10, 0), -100, false, 1},
                 {QTime(10, 0), 41, false, 2},
                 {QTime(10, 0), 41, false, std::nullopt}};
    s.IdGlobal = {1, 1};
    EXPECT_TRUE(Patient(1));

    for (const std::string &table : tables)
        EXPECT_EQ(allRows(*s.clientes, "select idm from " + table), u"2\n"_s) << table;
    EXPECT_EQ(allRows(*s.clientes, "select idm from consumo"), u"1\n"_s);
    // Tasks about a client, a user or the kennels hold the same number by coincidence.
    EXPECT_EQ(allRows(*s.morvane, "select tip from TareasAgenda order by id"),
              u"-43\n-47\n-70\n-71\n-72\n-100\n41\n"_s);
    QString attended;
    for (const store::Alarm &a : s.Alarmas)
        attended += a.attended ? u'1' : u'0';
    EXPECT_EQ(attended, u"1000"_s);
    EXPECT_EQ(remaining(), u"1\n2\n2\n12\n"_s);
    EXPECT_EQ(s.IdGlobal.idc, 1);
    EXPECT_EQ(s.IdGlobal.idm, 0);
}

TEST_F(Deletion, ImageFilesGoWithTheirPatientWhateverTheirLetterCase)
{
    sql("update mascotas set fot = -1 where idm = 1");
    sql("insert into mclinica (idm, idclinica, cantfotos) values (1, 70, 2)");
    sql("insert into meco (idm, ideco, cantfotos) values (1, 8, 1)");
    sql("insert into mrayos (idm, idray, ray) values (1, 9, -1)");
    sql("insert into mrayos (idm, idray, ray) values (1, 10, 0)");
    for (const char16_t *n :
         {u"FOT/1.BMP", u"FOT/2.bmp", u"cli/1701.bmp", u"cli/1702.Bmp", u"cli/1703.bmp",
          u"eco/181.bmp", u"eco/281.bmp", u"ray/19.bmp", u"ray/110.bmp"})
        fileOf(QString::fromUtf16(n));
    EXPECT_TRUE(Patient(1));
    // Images beyond the row's count, or for a row without any, do not belong to the patient.
    EXPECT_EQ(files(), u"cli/1703.bmp eco/281.bmp fot/2.bmp ray/110.bmp"_s);
}

TEST_F(Deletion, AnImageWhoseNameIsAlsoAnotherPatientsStays)
{
    // 1 + 23 + 1 and 12 + 3 + 1 make the same name.
    sql("insert into mclinica (idm, idclinica, cantfotos) values (1, 23, 1)");
    sql("insert into mclinica (idm, idclinica, cantfotos) values (12, 3, 1)");
    sql("insert into mrayos (idm, idray, ray) values (1, 25, -1)");
    sql("insert into mrayos (idm, idray, ray) values (12, 5, -1)");
    fileOf(u"cli/1231.bmp"_s);
    fileOf(u"ray/125.bmp"_s);
    EXPECT_TRUE(Patient(1));
    EXPECT_EQ(files(), u"cli/1231.bmp ray/125.bmp"_s);
    EXPECT_TRUE(Patient(12));
    EXPECT_EQ(files(), QString());
}

TEST_F(Deletion, AClientGoesWithItsPatientsAndItsMembership)
{
    sql("update clientes set obra = 3 where idc = 1");
    sql("update mascotas set fot = -1");
    sql("insert into artplan (idm) select idm from mascotas");
    for (const int idm : {1, 2, 12})
        fileOf(u"fot/%1.bmp"_s.arg(idm));
    {
        Base &os = *s.os;
        for (const int idc : {1, 2}) {
            os.Execute("insert into Socios (idc) values (?)", idc);
            os.Execute("insert into MascotasAsociadas (idm, idc) values (?, ?)", idc, idc);
        }
    }
    QStringList progress;
    s.progress.stage = [&](const QString &t) { progress << t; };
    s.progress.bar = [&](int done, int total) { progress << u"%1/%2"_s.arg(done).arg(total); };
    s.IdGlobal = {1, 2};
    EXPECT_TRUE(Client(1));
    EXPECT_EQ(progress.join(u' '), s(text::Deleting) + u" 1/2 2/2"_s);
    EXPECT_EQ(remaining(), u"2\n12\n"_s);
    EXPECT_EQ(allRows(*s.clientes, "select idm from artplan"), u"12\n"_s);
    EXPECT_EQ(files(), u"fot/12.bmp"_s);
    EXPECT_EQ(s.IdGlobal.idc, 0);
    EXPECT_EQ(s.IdGlobal.idm, 0);
    Base &os = *s.os;
    EXPECT_EQ(allRows(os, "select idc from socios")
                  + allRows(os, "select idc from MascotasAsociadas"),
              u"2\n2\n"_s);
}
