#include "clients/deletion.h"
#include "support/clinic.h"

#include <QDir>
#include <QDirIterator>
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
        EXPECT_TRUE(QDir().mkpath(QFileInfo(ruta).path()));
        EXPECT_TRUE(QFile(ruta).open(QIODevice::WriteOnly));
    }
    QString Archivos()
    {
        QStringList nombres;
        for (QDirIterator i(carpeta.path() + u"/mascotas"_s, QDir::Files,
                            QDirIterator::Subdirectories);
             i.hasNext();) {
            const QFileInfo archivo = i.nextFileInfo();
            nombres << archivo.dir().dirName().toLower() + u'/' + archivo.fileName();
        }
        nombres.sort();
        return nombres.join(u' ');
    }
    QString Quedan()
    {
        return Filas(*s.clientes, "select idc from clientes order by idc")
               + Filas(*s.clientes, "select idm from mascotas order by idm");
    }
    // What is asked or told, and the answer.
    bool Cliente(int idc, int texto = 3, bool si = true)
    {
        ask.Espera(s(texto), si);
        return EliminarCliente(s, idc);
    }
    bool Paciente(int idm, int texto = 3, bool si = true)
    {
        ask.Espera(s(texto), si);
        return EliminarPaciente(s, idm);
    }
    void Sql(const std::string &orden) { s.clientes->Execute(orden); }
};

} // namespace

TEST_F(Eliminacion, RefusalsComeInOrderAndDeleteNothing)
{
    Sql("update clientes set obra = 1, deuda = -1 where idc = 1");
    s.usuario.ut = 1;
    EXPECT_FALSE(Cliente(1, 1));
    EXPECT_FALSE(Paciente(1, 1));
    s.usuario.ut = 2;
    EXPECT_FALSE(Cliente(1, 2260)); // prepaid membership before debt
    Sql("update clientes set obra = 2 where idc = 1");
    EXPECT_FALSE(Cliente(1, 2260));
    Sql("update clientes set obra = 3 where idc = 1");
    EXPECT_FALSE(Cliente(1, 2261));
    EXPECT_FALSE(Cliente(2, 3, false));
    EXPECT_FALSE(Paciente(1, 3, false));
    EXPECT_TRUE(Cliente(99, 9418)); // gone already
    EXPECT_TRUE(Paciente(99, 9419));
    EXPECT_EQ(Quedan(), u"1\n2\n1\n2\n12\n"_s);
}

TEST_F(Eliminacion, APatientGoesWithItsRowsAndThoseOfOthersStay)
{
    std::vector<std::string> tablas{"ArtPlan",   "MAuri",   "MAhemograma", "MAbio",
                                    "MAcultivo", "MAcopro", "Minter",      "MHospedaje"};
    for (const std::string &tabla : tablas)
        Sql("insert into " + tabla + " (idm) select idm from mascotas where idc = 1");
    for (const auto &[tabla, clave] :
         {std::pair{"MEco", "ideco"}, {"MClinica", "idclinica"}, {"MRayos", "idray"}}) {
        Sql(std::string("insert into ") + tabla + " (idm, " + clave
            + ") select idm, idm from mascotas where idc = 1");
        tablas.push_back(tabla);
    }
    Sql("insert into consumo (idm, idcat) values (1, 1)");
    int id = 0;
    for (const int tip : {41, -41, -42, -43, -46, -47, -50, -51, -70, -71, -72, -100})
        s.morvane->Execute("insert into TareasAgenda (id, tip, ida) values (?, ?, 1)", ++id, tip);
    s.morvane->Execute("insert into TareasAgenda (id, tip, ida) values (50, 41, 2)");
    s.Alarmas = {{QTime(10, 0), 41, false, 1},
                 {QTime(10, 0), -100, false, 1},
                 {QTime(10, 0), 41, false, 2},
                 {QTime(10, 0), 41, false, std::nullopt}};
    s.IdGlobal = {1, 1};
    EXPECT_TRUE(Paciente(1));

    for (const std::string &tabla : tablas)
        EXPECT_EQ(Filas(*s.clientes, "select idm from " + tabla), u"2\n"_s) << tabla;
    EXPECT_EQ(Filas(*s.clientes, "select idm from consumo"), u"1\n"_s);
    // What is about a client, a user or the kennels has the same number for another reason.
    EXPECT_EQ(Filas(*s.morvane, "select tip from TareasAgenda order by id"),
              u"-43\n-47\n-70\n-71\n-72\n-100\n41\n"_s);
    QString atendidas;
    for (const Alarma &a : s.Alarmas)
        atendidas += a.atendida ? u'1' : u'0';
    EXPECT_EQ(atendidas, u"1000"_s);
    EXPECT_EQ(Quedan(), u"1\n2\n2\n12\n"_s);
    EXPECT_EQ(s.IdGlobal.idc, 1);
    EXPECT_EQ(s.IdGlobal.idm, 0);
}

TEST_F(Eliminacion, ImageFilesGoWithTheirPatientWhateverTheirLetterCase)
{
    Sql("update mascotas set fot = -1 where idm = 1");
    Sql("insert into mclinica (idm, idclinica, cantfotos) values (1, 70, 2)");
    Sql("insert into meco (idm, ideco, cantfotos) values (1, 8, 1)");
    Sql("insert into mrayos (idm, idray, ray) values (1, 9, -1)");
    Sql("insert into mrayos (idm, idray, ray) values (1, 10, 0)");
    for (const char16_t *n :
         {u"FOT/1.BMP", u"FOT/2.bmp", u"cli/1701.bmp", u"cli/1702.Bmp", u"cli/1703.bmp",
          u"eco/181.bmp", u"eco/281.bmp", u"ray/19.bmp", u"ray/110.bmp"})
        Archivo(QString::fromUtf16(n));
    EXPECT_TRUE(Paciente(1));
    // More images than the row counts, and what has no image by its row, are not the patient's.
    EXPECT_EQ(Archivos(), u"cli/1703.bmp eco/281.bmp fot/2.bmp ray/110.bmp"_s);
}

TEST_F(Eliminacion, AnImageWhoseNameIsAlsoAnotherPatientsStays)
{
    // 1 + 23 + 1 and 12 + 3 + 1 are one name.
    Sql("insert into mclinica (idm, idclinica, cantfotos) values (1, 23, 1)");
    Sql("insert into mclinica (idm, idclinica, cantfotos) values (12, 3, 1)");
    Sql("insert into mrayos (idm, idray, ray) values (1, 25, -1)");
    Sql("insert into mrayos (idm, idray, ray) values (12, 5, -1)");
    Archivo(u"cli/1231.bmp"_s);
    Archivo(u"ray/125.bmp"_s);
    EXPECT_TRUE(Paciente(1));
    EXPECT_EQ(Archivos(), u"cli/1231.bmp ray/125.bmp"_s);
    EXPECT_TRUE(Paciente(12));
    EXPECT_EQ(Archivos(), QString());
}

TEST_F(Eliminacion, AClientGoesWithItsPatientsAndItsMembership)
{
    Sql("update clientes set obra = 3 where idc = 1");
    Sql("update mascotas set fot = -1");
    Sql("insert into artplan (idm) select idm from mascotas");
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
    EXPECT_TRUE(Cliente(1));
    EXPECT_EQ(avance.join(u' '), s(9422) + u" 1/2 2/2"_s);
    EXPECT_EQ(Quedan(), u"2\n12\n"_s);
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
    Sql("update clientes set obra = 3 where idc = 1");
    Sql("update mascotas set fot = -1");
    Archivo(u"fot/1.bmp"_s);
    ASSERT_TRUE(QFile::remove(carpeta.path() + u"/os.mdb"_s));
    EXPECT_THROW(Cliente(1), ErrorDeAlmacen);
    EXPECT_EQ(Quedan(), u"1\n2\n1\n2\n12\n"_s);
    EXPECT_EQ(Archivos(), u"fot/1.bmp"_s);
}
