// Recordsets and statements against a real clinic.

#include "store/identifiers.h"
#include "store/jet/text.h"
#include "store/lookups.h"
#include "support/clinic.h"

#include <QThread>

using namespace Qt::StringLiterals;

namespace
{

class Almacen : public Clinica
{
protected:
    void Cliente(int idc, const QString &ayn)
    {
        s.clientes->Execute("insert into Clientes (idc, ayn) values (?, ?)", idc, ayn);
    }
    /// Clients C1 to Cn.
    void Clientes(int n)
    {
        for (int i = 1; i <= n; ++i)
            Cliente(i, u"C%1"_s.arg(i));
    }
    QString Nombre(Sesion &sesion) { return LeerCampo(sesion, "clientes", "CLIENTES", 1, "Ayn"); }
    void Renombrar(const QString &ayn)
    {
        s.clientes->Execute("update clientes set ayn = ? where idc = 1", ayn);
    }
    /// 0 when it is done without an error.
    int NumeroDe(const std::function<void()> &f)
    {
        try {
            f();
        } catch (const ErrorDeAlmacen &e) {
            return e.numero;
        }
        return 0;
    }
};

} // namespace

TEST_F(Almacen, WalksBothWaysAndSaysWhereItStands)
{
    Clientes(3);
    Recordset r = s.clientes->OpenRecordset("select idc, ayn from clientes order by idc");
    EXPECT_EQ(r.RecordCount(), 3);
    EXPECT_EQ(r["IDC"].toInt(), 1);
    r.MovePrevious();
    EXPECT_TRUE(r.BOF());
    EXPECT_EQ(NumeroDe([&] { r["idc"]; }), ErrorNum::SinRegistroActual);
    r.MoveLast();
    EXPECT_EQ(r.AbsolutePosition(), 2);
    r.MoveNext();
    r.MoveNext(); // staying past the end is no error
    EXPECT_TRUE(r.EOF_());
    EXPECT_EQ(r.AbsolutePosition(), -1);

    Recordset vacio = s.clientes->OpenRecordset("select * from mascotas");
    EXPECT_TRUE(vacio.BOF() && vacio.EOF_());
    vacio.MoveFirst();
    vacio.MoveLast();
    EXPECT_TRUE(vacio.EOF_());
    EXPECT_EQ(NumeroDe([&] { vacio["nada"]; }), ErrorNum::NoEnLaColeccion);
}

TEST_F(Almacen, DeleteLeavesNoCurrentRowUntilTheNextMove)
{
    Clientes(4);
    Recordset r = s.clientes->OpenRecordset("select * from clientes order by idc");
    r.MoveNext();
    r.Delete();
    EXPECT_EQ(r.RecordCount(), 3);
    EXPECT_EQ(NumeroDe([&] { r["idc"]; }), ErrorNum::SinRegistroActual);
    r.MoveNext();
    EXPECT_EQ(r["idc"].toInt(), 3);
    r.MovePrevious();
    EXPECT_EQ(r["idc"].toInt(), 1); // the deleted row is stepped over
    r.FindFirst("idc = ?", 2);
    EXPECT_TRUE(r.NoMatch());
    EXPECT_EQ(Filas(*s.clientes, "select idc from clientes order by idc"), u"1\n3\n4\n"_s);
}

TEST_F(Almacen, UpdateWritesOnlyWhatChangedAlsoThroughAJoin)
{
    Cliente(1, u"Ruiz"_s);
    s.clientes->Execute("insert into Mascotas (idm, idc, nom) values (10, 1, 'Luna')");
    Recordset r = s.clientes->OpenRecordset(
        "select * from mascotas inner join clientes on mascotas.idc = clientes.idc");
    // Meanwhile another terminal changes another column of the same rows.
    s.clientes->Execute("update clientes set dir = ? where idc = 1", u"Mitre 100"_s);
    r.Edit();
    r.Put("ayn", u"Ruiz Ana"_s);
    r.Put("tarea", true);
    r.Put("dir", QString()); // not what was read: Null then; a change, so it is written
    EXPECT_EQ(r["ayn"].toText(), u"Ruiz Ana"_s);
    r.CancelUpdate();
    EXPECT_EQ(r["ayn"].toText(), u"Ruiz"_s);

    r.Edit();
    r.Put("ayn", u"Ruiz Ana"_s);
    r.Put("tarea", true);
    r.Update();
    EXPECT_EQ(Filas(*s.clientes, "select ayn, dir from clientes"), u"Ruiz Ana|Mitre 100\n"_s);
    EXPECT_EQ(Filas(*s.clientes, "select nom, tarea from mascotas"), u"Luna|-1\n"_s);
    EXPECT_EQ(r["tarea"].toBool(), true);

    Recordset foto = s.clientes->OpenSnapshot("select * from clientes");
    EXPECT_NE(NumeroDe([&] { foto.Edit(); }), 0);
    // A row that another terminal deleted cannot be changed silently.
    s.clientes->Execute("delete * from clientes");
    r.Edit();
    r.Put("ayn", u"X"_s);
    EXPECT_EQ(NumeroDe([&] { r.Update(); }), ErrorNum::SinRegistroActual);
}

TEST_F(Almacen, AnEditThatWasNotWrittenReachesNoOtherRow)
{
    Clientes(3);
    Recordset r = s.clientes->OpenRecordset("select idc, ayn from clientes order by idc");
    const std::pair<const char *, std::function<void()>> movimientos[] = {
        {"MoveNext", [&] { r.MoveNext(); }},
        {"MoveLast", [&] { r.MoveLast(); }},
        {"MovePrevious", [&] { r.MovePrevious(); }},
        {"MoveFirst", [&] { r.MoveFirst(); }},
        {"FindFirst", [&] { r.FindFirst("idc = ?", 2); }},
        {"AbsolutePosition", [&] { r.AbsolutePosition(2); }},
        {"Requery", [&] { r.Requery(); }},
    };
    for (const auto &[nombre, mover] : movimientos) {
        r.Edit();
        r.Put("ayn", u"lost"_s);
        mover();
        EXPECT_EQ(r["ayn"].toText(), u"C%1"_s.arg(r["idc"].toInt())) << nombre;
        EXPECT_NE(NumeroDe([&] { r.Update(); }), 0) << nombre;
    }
    EXPECT_EQ(Filas(*s.clientes, "select ayn from clientes"), u"C1\nC2\nC3\n"_s);

    r.Close();
    EXPECT_FALSE(r.Abierto());
    EXPECT_EQ(NumeroDe([&] { r.MoveFirst(); }), ErrorNum::SinRegistroActual);
    EXPECT_NE(NumeroDe([&] { r["ayn"]; }), 0);
}

TEST_F(Almacen, ValuesCrossTyped)
{
    s.clientes->Execute("insert into consumo (idm, idcat, can, con, men) values (1, 1, ?, ?, ?)",
                        Moneda::DeDiezmilesimos(12345), 0.30004, true);
    const Recordset r = s.clientes->OpenSnapshot("select * from consumo");
    EXPECT_EQ(r["can"].toMoneda(), Moneda::DeDiezmilesimos(12345));
    EXPECT_EQ(r["con"].toMoneda(), Moneda::DeDiezmilesimos(3000)); // rounded in the statement
    EXPECT_TRUE(r["men"].Es<bool>() && r["men"].toBool());
    EXPECT_TRUE(r["ida"].EsNulo());

    s.morvane->Execute("insert into TareasAgenda (id, dia, hor, est) values (1, ?, ?, 0)",
                       QDate(2026, 2, 28), QTime(8, 5));
    const Recordset t = s.morvane->OpenSnapshot("select dia, hor from TareasAgenda");
    EXPECT_EQ(t["dia"], Valor(QDate(2026, 2, 28)));
    EXPECT_EQ(t["hor"], Valor(QTime(8, 5)));
}

TEST_F(Almacen, MemosThatLookLikeNumbersKeepTheirLetters)
{
    const auto guardado = [this] { return s.clientes->Leer("select obs from clientes").toText(); };
    for (const QString &memo :
         {u"0341"_s, u" 12 "_s, u"1e5"_s, u"+54"_s, u"4251111"_s, u"nota"_s}) {
        s.clientes->Execute("delete * from clientes");
        s.clientes->Execute("insert into Clientes (idc, obs) values (1, ?)", memo);
        EXPECT_EQ(guardado(), memo);
        Recordset r = s.clientes->OpenRecordset("select * from clientes");
        r.Edit();
        r.Put("obs", memo + u'0');
        r.Update();
        EXPECT_EQ(guardado(), memo + u'0');
        r = s.clientes->OpenSnapshot("select idc from clientes where obs like ?", memo + u'*');
        EXPECT_EQ(r.RecordCount(), 1);
    }
}

TEST_F(Almacen, HostileTextIsStoredAndFoundAsItIs)
{
    int idc = 0;
    for (const QString &nombre : {u"O'Higgins \"x\"; drop table clientes --"_s, u"a*b"_s, u"[a]"_s,
                                  u"50% _"_s, u"🐶 Ñandú"_s, u"x"_s.repeated(10000), u" "_s}) {
        Cliente(++idc, nombre);
        EXPECT_EQ(s.clientes->Leer("select idc from clientes where ayn = ?", nombre).toInt(), idc);
        s.listas.clientes.FindFirst("ayn = ?", nombre);
        EXPECT_EQ(s.listas.clientes["idc"].toInt(), idc);
    }
    EXPECT_EQ(BuscarIdPorTexto(s, "clientes", "clientes", "ayn", u"a[*]B"_s, "idc"), 2);
    EXPECT_EQ(BuscarIdPorTexto(s, "clientes", "clientes", "ayn", u"*ñANDÚ"_s, "idc"), 5);
    EXPECT_EQ(BuscarIdPorTexto(s, "clientes", "clientes", "ayn", u"nobody"_s, "idc"), 0);
}

TEST_F(Almacen, ListsNoticeWhatIsWrittenHereThereAndTakenBack)
{
    Cliente(1, u"Uno"_s);
    EXPECT_EQ(Nombre(s), u"Uno"_s);
    Renombrar(u"Dos"_s);
    EXPECT_EQ(Nombre(s), u"Dos"_s);
    {
        Lote lote(s);
        Renombrar(u"Nunca"_s);
        EXPECT_EQ(Nombre(s), u"Nunca"_s);
    }
    EXPECT_EQ(Nombre(s), u"Dos"_s);

    Sesion otra(ask, impresion, Idioma::Ingles);
    FijarCarpetaDeDatos(otra, carpeta.path());
    ASSERT_FALSE(AbrirAlmacen(otra));
    EXPECT_EQ(Nombre(otra), u"Dos"_s);
    Renombrar(u"Tres"_s);
    s.morvane->Execute("update configuracion set KgLbs = 2");
    QThread::msleep(250);
    EXPECT_EQ(Nombre(otra), u"Tres"_s);
    EXPECT_EQ(otra.configuracion["KgLbs"].toInt(), 2);
    // The other's list now knows the row; a write of its own keeps it up to date without a read.
    Recordset &lista = otra.listas.clientes;
    lista.FindFirst("idc = ?", 1);
    lista.Edit();
    lista.Put("ayn", u"Cuatro"_s);
    lista.Update();
    lista.FindFirst("ayn = ?", u"CUATRO"_s);
    EXPECT_FALSE(lista.NoMatch());
}

TEST_F(Almacen, AListStaysOnItsRowWhileOthersComeAndGo)
{
    for (int i = 2; i <= 4; ++i)
        Cliente(i, u"C%1"_s.arg(i));
    Recordset &lista = s.listas.clientes;
    lista.FindFirst("idc = ?", 3);
    Cliente(1, u"C1"_s);
    EXPECT_EQ(lista["ayn"].toText(), u"C3"_s);
    s.clientes->Execute("delete * from clientes where idc < 3");
    EXPECT_EQ(lista["ayn"].toText(), u"C3"_s);
    // Gone is gone: no field of the next client is given for it.
    s.clientes->Execute("delete * from clientes where idc = 3");
    EXPECT_EQ(NumeroDe([&] { lista["ayn"]; }), ErrorNum::SinRegistroActual);
    lista.FindFirst("idc = ?", 4);
    EXPECT_EQ(lista["ayn"].toText(), u"C4"_s);
}

TEST_F(Almacen, FindFirstGivesTheFirstRowWhicheverWayItLooks)
{
    Cliente(5, u"Ágata"_s);
    Cliente(3, u"ágata"_s);
    Cliente(9, u"Agata"_s);
    Recordset r = s.clientes->OpenSnapshot("select * from clientes order by idc");
    r.FindFirst("ayn = 'ÁGATA'");
    EXPECT_EQ(r["idc"].toInt(), 3);
    r.FindFirst("ayn like ?", u"?gata"_s);
    EXPECT_EQ(r["idc"].toInt(), 3);
    r.FindFirst("idc > 3 and ayn = ?", u"agata"_s);
    EXPECT_EQ(r["idc"].toInt(), 9);
    r.FindFirst("idc = 4");
    EXPECT_TRUE(r.NoMatch());
    EXPECT_EQ(r["idc"].toInt(), 9); // stays where it was

    EXPECT_TRUE(BuscarEnLista(s.listas.clientes, u"ÁGA"_s, "ayn", true));
    EXPECT_FALSE(BuscarEnLista(s.listas.clientes, u"ÁGA"_s, "ayn"));
    EXPECT_TRUE(BuscarEnLista(s.listas.clientes, 9, "idc"));
    EXPECT_FALSE(BuscarEnLista(s.listas.clientes, hoy, "feci"));
    EXPECT_FALSE(BuscarEnLista(s.listas.proveedores, 1, "idp"));
}

TEST_F(Almacen, LookUpsReachEachTableByItsKeyAndMissWithNothing)
{
    s.clientes->Execute("insert into CLMarketing (id, nom) values (3, ?)", u"Radio"_s);
    EXPECT_EQ(LeerCampo(s, "clientes", "clmarketing", 3, "nom"), u"Radio"_s);
    EXPECT_EQ(LeerCampo(s, "clientes", "mlespecies", 2, "nom"), u"Felino"_s);
    EXPECT_EQ(LeerCampo(s, "clientes", "mlespecies", 77, "nom"), QString());
    EXPECT_EQ(LeerCampo(s, "os", "planes", 1, "nom"), QString()); // not open
    AbrirAuxiliar(s, u"os"_s)
        .Execute("insert into planes (nom, monto) values (?, 15.5)", u"Plan 1"_s);
    EXPECT_EQ(LeerCampo(s, "os", "planes", 1, "nom"), u"Plan 1"_s);
    EXPECT_EQ(BuscarIdPorTexto(s, "os", "planes", "nom", u"plan*"_s, "id"), 1);
    CerrarAuxiliar(s);

    EXPECT_TRUE(ExisteNombre(s, "finanzas", "flcategorias",
                             LeerCampo(s, "finanzas", "flcategorias", 3, "nom").toUpper()));
    EXPECT_FALSE(ExisteNombre(s, "finanzas", "flcategorias", u"none such"_s));
    EXPECT_EQ(QuitarApostrofes(u"O'Hi'"_s), u"O Hi "_s);
    ask.Espera(u"Can not use the character (')"_s);
    int tecla = '\'';
    FiltrarApostrofe(s, tecla);
    EXPECT_EQ(tecla, 0);
}

TEST_F(Almacen, ABatchIsAllOrNothingOverEveryDatabase)
{
    {
        Lote lote(s);
        Cliente(1, u"Uno"_s);
        s.morvane->Execute("insert into perfiles (idc) values (1)");
        {
            Lote dentro(s);
            s.finanzas->Execute("insert into UsoInterno (ida) values (1)");
            dentro.Confirmar(); // only the outermost commits
        }
    }
    EXPECT_EQ(s.clientes->Leer("select count(*) from clientes").toInt(), 0);
    EXPECT_EQ(s.morvane->Leer("select count(*) from perfiles").toInt(), 0);
    EXPECT_EQ(s.finanzas->Leer("select count(*) from UsoInterno").toInt(), 0);
}

TEST_F(Almacen, IdentifiersStopAtTheEndOfTheirRangeAndWriteNothing)
{
    s.morvane->Execute("update configuracion set contadorclientes = 32766");
    EXPECT_EQ(TomarIdentificador(s, "contadorclientes", MayorIdDe16Bits), 32767);
    EXPECT_EQ(NumeroDe([&] { TomarIdentificador(s, "contadorclientes", MayorIdDe16Bits); }),
              ErrorNum::SinIdentificadores);
    EXPECT_EQ(s.morvane->Leer("select contadorclientes from configuracion").toInt(), 32767);
    // A batch that is taken back gives its number back, and the next one is taken from the file.
    {
        Lote lote(s);
        EXPECT_EQ(TomarIdentificador(s, "contadorraza"), 1);
    }
    EXPECT_EQ(TomarIdentificador(s, "contadorraza"), 1);
    EXPECT_EQ(TomarIdentificador(s, "contadorraza"), 2);
}

TEST_F(Almacen, ColumnsAreAddedChangedAndDroppedWithTheirRows)
{
    s.finanzas->Execute("insert into Ventas (idventa, tfac, tot) values (7, 'A', 12.5)");
    s.finanzas->Execute("ALTER TABLE Ventas ADD COLUMN Nueva YESNO");
    s.finanzas->Execute("ALTER TABLE Ventas ALTER COLUMN tfac TEXT(25)");
    EXPECT_EQ(NumeroDe([&] { s.finanzas->Execute("ALTER TABLE Ventas ADD COLUMN NUEVA LONG"); }),
              ErrorNum::ColumnaExiste);
    EXPECT_EQ(
        NumeroDe([&] { s.finanzas->Execute("ALTER TABLE Ventas ALTER COLUMN hora TEXT(25)"); }),
        ErrorNum::NoEnLaColeccion);
    EXPECT_EQ(Filas(*s.finanzas, "select idventa, tfac, tot, Nueva from Ventas"),
              u"7|A|12.5|0\n"_s);
    EXPECT_EQ(s.finanzas->Ancho("ventas", "TFAC"), 25);
    EXPECT_EQ(s.finanzas->Recortado("ventas", "tfac", u"x"_s.repeated(26)).size(), 25);
    EXPECT_EQ(s.clientes->Recortado("clientes", "obs", u"x"_s.repeated(999)).size(), 999); // memo
    s.finanzas->Execute("ALTER TABLE Ventas DROP COLUMN Nueva");
    EXPECT_FALSE(s.finanzas->ExisteColumna("ventas", "nueva"));
    EXPECT_FALSE(s.motor->Indices("finanzas", "Ventas").empty());

    s.finanzas->Execute("CREATE TABLE Viejos (nom TEXT(10))");
    s.finanzas->Execute("insert into Viejos (nom) values ('a')");
    s.finanzas->Execute("ALTER TABLE Viejos ADD COLUMN ID COUNTER");
    s.finanzas->Execute("insert into Viejos (nom) values ('b')");
    EXPECT_EQ(Filas(*s.finanzas, "select ID, nom from Viejos order by id"), u"1|a\n2|b\n"_s);
    EXPECT_EQ(NumeroDe([&] { s.finanzas->Execute("CREATE TABLE viejos (x LONG)"); }),
              ErrorNum::TablaExiste);
}

TEST_F(Almacen, TheMarkFindsTheFolderThatIsReallyWritten)
{
    // The session's folder is a candidate; the program folder here holds no databases.
    s.carpetaDePrograma = carpeta.path() + u"/programa/"_s;
    QDir().mkpath(s.carpetaDePrograma);
    EXPECT_EQ(RutaRealDeDatos(s), s.carpetaDeDatos);
    EXPECT_EQ(s.morvane->Leer("select count(*) from TareasAgenda").toInt(), 0);
    EXPECT_EQ(s.configuracion["contadorTareas"].toInt(), 0); // the number was not taken
    EscribirRuta(s.carpetaDePrograma, u"/otra/parte"_s);
    EXPECT_EQ(RutaRealDeDatos(s), s.carpetaDeDatos); // the folder was given to this session
    s.carpetaDada = false;
    EXPECT_EQ(RutaRealDeDatos(s), u"/otra/parte/"_s);
}

TEST(Moneda, RoundsHalfToEvenAndReadsWhatUsersType)
{
    EXPECT_EQ(Moneda::Redondear(1.00005).Diezmilesimos(), 10000);
    EXPECT_EQ(Moneda::Redondear(1.00015).Diezmilesimos(), 10002);
    EXPECT_EQ(Moneda::Redondear(-0.00015).Diezmilesimos(), -2);
    EXPECT_EQ((Moneda::Redondear(0.3) - Moneda::Redondear(0.1) * 3), Moneda());
    EXPECT_EQ((Moneda::Redondear(2.5) * Moneda::Redondear(0.0001)).Diezmilesimos(), 2);
    EXPECT_EQ(Moneda::DeTexto(u"12,5"_s, u','), Moneda::DeDiezmilesimos(125000));
    EXPECT_EQ(Moneda::DeTexto(u"1.5"_s, u','), std::nullopt);
    EXPECT_EQ(Moneda::DeTexto(u"1e400"_s), std::nullopt);
    EXPECT_EQ(Moneda::DeDiezmilesimos(-2500).ATexto(), u"-0.25"_s);
    EXPECT_EQ(Moneda::Redondear(1e300).Diezmilesimos(), std::numeric_limits<qint64>::max());
}
