#include "clients/deletion.h"
#include "support/clinic.h"

#include <QDir>
#include <QFile>

using namespace Qt::StringLiterals;

namespace
{

// Client 1 with patients 1 and 2, client 2 with patient 12.
class Eliminacion : public Clinica
{
protected:
    Eliminacion()
    {
        for (const int idc : {1, 2})
            s.clientes->Execute("insert into clientes (idc, ayn) values (?, 'Ana')", idc);
        for (const int idm : {1, 2, 12})
            s.clientes->Execute("insert into mascotas (idm, idc, nom) values (?, ?, 'Luna')", idm,
                                idm == 12 ? 2 : 1);
        s.usuario.ut = 2;
    }
    void Archivo(const QString &nombre)
    {
        const QString ruta = carpeta.path() + u"/mascotas/"_s + nombre;
        QDir().mkpath(QFileInfo(ruta).path());
        QFile f(ruta);
        EXPECT_TRUE(f.open(QIODevice::WriteOnly));
    }
    QString Archivos()
    {
        QStringList nombres;
        for (const QString &sub :
             QDir(carpeta.path() + u"/mascotas"_s).entryList(QDir::Dirs | QDir::NoDotAndDotDot))
            for (const QString &n :
                 QDir(carpeta.path() + u"/mascotas/"_s + sub).entryList(QDir::Files))
                nombres << sub.toLower() + u'/' + n;
        nombres.sort();
        return nombres.join(u' ');
    }
    QString Clientes() { return Filas(*s.clientes, "select idc from clientes order by idc"); }
    QString Pacientes() { return Filas(*s.clientes, "select idm from mascotas order by idm"); }
};

} // namespace

TEST_F(Eliminacion, RefusalsComeInOrderAndDeleteNothing)
{
    s.clientes->Execute("update clientes set obra = 1, deuda = -1 where idc = 1");
    s.usuario.ut = 1;
    ask.Espera(s(1));
    EXPECT_FALSE(EliminarCliente(s, 1));
    ask.Espera(s(1));
    EXPECT_FALSE(EliminarPaciente(s, 1));
    s.usuario.ut = 2;
    ask.Espera(s(2260)); // prepaid membership before debt
    EXPECT_FALSE(EliminarCliente(s, 1));
    s.clientes->Execute("update clientes set obra = 2 where idc = 1");
    ask.Espera(s(2260));
    EXPECT_FALSE(EliminarCliente(s, 1));
    s.clientes->Execute("update clientes set obra = 3 where idc = 1");
    ask.Espera(s(2261));
    EXPECT_FALSE(EliminarCliente(s, 1));
    ask.Espera(s(3), false);
    EXPECT_FALSE(EliminarCliente(s, 2));
    ask.Espera(s(3), false);
    EXPECT_FALSE(EliminarPaciente(s, 1));
    ask.Espera(s(9418)); // gone already
    EXPECT_TRUE(EliminarCliente(s, 99));
    ask.Espera(s(9419));
    EXPECT_TRUE(EliminarPaciente(s, 99));
    EXPECT_EQ(Clientes() + Pacientes(), u"1\n2\n1\n2\n12\n"_s);
}

TEST_F(Eliminacion, APatientGoesWithItsRowsAndThoseOfOthersStay)
{
    const std::string_view tablas[] = {"ArtPlan",   "MAuri",    "MAhemograma", "MAbio",
                                       "MAcultivo", "MAcopro",  "Minter",      "MHospedaje",
                                       "MEco",      "MClinica", "MRayos"};
    for (const std::string_view tabla : tablas)
        for (const int idm : {1, 2}) {
            const std::string clave = tabla == "MClinica" ? ", idclinica"
                                      : tabla == "MEco"   ? ", ideco"
                                      : tabla == "MRayos" ? ", idray"
                                                          : "";
            s.clientes->Execute("insert into " + std::string(tabla) + " (idm" + clave + ") values ("
                                + std::to_string(idm)
                                + (clave.empty() ? "" : ", " + std::to_string(idm)) + ")");
        }
    s.clientes->Execute("insert into consumo (idm, idcat) values (1, 1)");
    int id = 0;
    for (const int tip : {41, -41, -42, -43, -46, -47, -50, -51, -70, -71, -72, -100})
        s.morvane->Execute("insert into TareasAgenda (id, tip, ida) values (?, ?, 1)", ++id, tip);
    s.morvane->Execute("insert into TareasAgenda (id, tip, ida) values (50, 41, 2)");
    s.Alarmas = {{QTime(10, 0), 41, false, 1},
                 {QTime(10, 0), -100, false, 1},
                 {QTime(10, 0), 41, false, 2},
                 {QTime(10, 0), 41, false, std::nullopt}};
    s.IdGlobal = {1, 1};
    ask.Espera(s(3));
    EXPECT_TRUE(EliminarPaciente(s, 1));

    for (const std::string_view tabla : tablas)
        EXPECT_EQ(Filas(*s.clientes, "select idm from " + std::string(tabla)), u"2\n"_s) << tabla;
    EXPECT_EQ(Filas(*s.clientes, "select idm from consumo"), u"1\n"_s);
    // What is about a client, a user or the kennels has the same number for another reason.
    EXPECT_EQ(Filas(*s.morvane, "select tip from TareasAgenda order by id"),
              u"-43\n-47\n-70\n-71\n-72\n-100\n41\n"_s);
    QString atendidas;
    for (const Alarma &a : s.Alarmas)
        atendidas += a.atendida ? u'1' : u'0';
    EXPECT_EQ(atendidas, u"1000"_s);
    EXPECT_EQ(Pacientes(), u"2\n12\n"_s);
    EXPECT_EQ(s.IdGlobal.idc, 1);
    EXPECT_EQ(s.IdGlobal.idm, 0);
}

TEST_F(Eliminacion, ImageFilesGoWithTheirPatientWhateverTheirLetterCase)
{
    s.clientes->Execute("update mascotas set fot = -1 where idm = 1");
    s.clientes->Execute("insert into mclinica (idm, idclinica, cantfotos) values (1, 70, 2)");
    s.clientes->Execute("insert into meco (idm, ideco, cantfotos) values (1, 8, 1)");
    s.clientes->Execute("insert into mrayos (idm, idray, ray) values (1, 9, -1)");
    s.clientes->Execute("insert into mrayos (idm, idray, ray) values (1, 10, 0)");
    for (const char16_t *n :
         {u"FOT/1.BMP", u"FOT/2.bmp", u"cli/1701.bmp", u"cli/1702.Bmp", u"cli/1703.bmp",
          u"eco/181.bmp", u"eco/281.bmp", u"ray/19.bmp", u"ray/110.bmp"})
        Archivo(QString::fromUtf16(n));
    ask.Espera(s(3));
    EXPECT_TRUE(EliminarPaciente(s, 1));
    // More images than the row counts, and what has no image by its row, are not the patient's.
    EXPECT_EQ(Archivos(), u"cli/1703.bmp eco/281.bmp fot/2.bmp ray/110.bmp"_s);
}

TEST_F(Eliminacion, AnImageWhoseNameIsAlsoAnotherPatientsStays)
{
    // 1 + 23 + 1 and 12 + 3 + 1 are one name.
    s.clientes->Execute("insert into mclinica (idm, idclinica, cantfotos) values (1, 23, 1)");
    s.clientes->Execute("insert into mclinica (idm, idclinica, cantfotos) values (12, 3, 1)");
    s.clientes->Execute("insert into mrayos (idm, idray, ray) values (1, 25, -1)");
    s.clientes->Execute("insert into mrayos (idm, idray, ray) values (12, 5, -1)");
    Archivo(u"cli/1231.bmp"_s);
    Archivo(u"ray/125.bmp"_s);
    ask.Espera(s(3));
    EXPECT_TRUE(EliminarPaciente(s, 1));
    EXPECT_EQ(Archivos(), u"cli/1231.bmp ray/125.bmp"_s);
    ask.Espera(s(3));
    EXPECT_TRUE(EliminarPaciente(s, 12));
    EXPECT_EQ(Archivos(), QString());
}

TEST_F(Eliminacion, AClientGoesWithItsPatientsAndItsMembership)
{
    s.clientes->Execute("update clientes set obra = 3 where idc = 1");
    s.clientes->Execute("update mascotas set fot = -1");
    s.clientes->Execute("insert into artplan (idm) select idm from mascotas");
    for (const int idm : {1, 2, 12})
        Archivo(u"fot/%1.bmp"_s.arg(idm));
    {
        Base &os = AbrirAuxiliar(s, u"os"_s);
        for (const int idc : {1, 2}) {
            os.Execute("insert into Socios (idc) values (?)", idc);
            os.Execute("insert into MascotasAsociadas (idm, idc) values (?, ?)", idc, idc);
        }
        CerrarAuxiliar(s);
    }
    QStringList avance;
    s.avance.etapa = [&](const QString &t) { avance << t; };
    s.avance.barra = [&](int hecho, int total) { avance << u"%1/%2"_s.arg(hecho).arg(total); };
    s.IdGlobal = {1, 2};
    ask.Espera(s(3));
    EXPECT_TRUE(EliminarCliente(s, 1));
    EXPECT_EQ(avance.join(u' '), s(9422) + u" 1/2 2/2"_s);
    EXPECT_EQ(Clientes() + Pacientes(), u"2\n12\n"_s);
    EXPECT_EQ(Filas(*s.clientes, "select idm from artplan"), u"12\n"_s);
    EXPECT_EQ(Archivos(), u"fot/12.bmp"_s);
    EXPECT_EQ(s.IdGlobal.idc, 0);
    EXPECT_EQ(s.IdGlobal.idm, 0);
    EXPECT_FALSE(s.auxiliar);
    Base &os = AbrirAuxiliar(s, u"os"_s);
    EXPECT_EQ(Filas(os, "select idc from socios") + Filas(os, "select idc from MascotasAsociadas"),
              u"2\n2\n"_s);
}

TEST_F(Eliminacion, WithoutTheMembersDatabaseNothingIsDeleted)
{
    s.clientes->Execute("update clientes set obra = 3 where idc = 1");
    s.clientes->Execute("update mascotas set fot = -1");
    Archivo(u"fot/1.bmp"_s);
    ASSERT_TRUE(QFile::remove(carpeta.path() + u"/os.mdb"_s));
    ask.Espera(s(3));
    EXPECT_THROW(EliminarCliente(s, 1), ErrorDeAlmacen);
    EXPECT_EQ(Clientes() + Pacientes(), u"1\n2\n1\n2\n12\n"_s);
    EXPECT_EQ(Archivos(), u"fot/1.bmp"_s);
}
