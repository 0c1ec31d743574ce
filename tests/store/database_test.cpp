// Recordsets and statements against a real clinic.

#include "store/identifiers.h"
#include "store/jet/text.h"
#include "store/lookups.h"
#include "store/opening.h"
#include "support/clinic.h"
#include "texts/texts.h"

#include <QThread>

using namespace store;
using namespace Qt::StringLiterals;

namespace
{

class Store : public Clinic
{
protected:
    void Client(int idc, const QString &ayn)
    {
        s.clientes->Execute("insert into Clientes (idc, ayn) values (?, ?)", idc, ayn);
    }
    /// Clients C1 to Cn.
    void Clientes(int n)
    {
        for (int i = 1; i <= n; ++i)
            Client(i, u"C%1"_s.arg(i));
    }
    QString nameOf(Sesion &session) { return LeerCampo(session, "clientes", "CLIENTES", 1, "Ayn"); }
    void rename(const QString &ayn)
    {
        s.clientes->Execute("update clientes set ayn = ? where idc = 1", ayn);
    }
    /// The number of the error, 0 when there is none.
    int numberOf(const std::function<void()> &f)
    {
        try {
            f();
        } catch (const StoreError &e) {
            return e.number;
        }
        return 0;
    }
};

} // namespace

TEST_F(Store, WalksBothWaysAndSaysWhereItStands)
{
    Clientes(3);
    Recordset r = s.clientes->OpenRecordset("select idc, ayn from clientes order by idc");
    EXPECT_EQ(r.RecordCount(), 3);
    EXPECT_EQ(r["IDC"].toInt(), 1);
    r.MovePrevious();
    EXPECT_TRUE(r.BOF());
    EXPECT_EQ(numberOf([&] { r["idc"]; }), ErrorNumber::NoCurrentRecord);
    r.MoveLast();
    EXPECT_EQ(r.AbsolutePosition(), 2);
    r.MoveNext();
    r.MoveNext(); // moving on past the end is not an error
    EXPECT_TRUE(r.EOF_());
    EXPECT_EQ(r.AbsolutePosition(), -1);

    Recordset empty = s.clientes->OpenRecordset("select * from mascotas");
    EXPECT_TRUE(empty.BOF() && empty.EOF_());
    empty.MoveFirst();
    empty.MoveLast();
    EXPECT_TRUE(empty.EOF_());
    EXPECT_EQ(numberOf([&] { empty["nada"]; }), ErrorNumber::NotInCollection);
}

TEST_F(Store, DeleteLeavesNoCurrentRowUntilTheNextMove)
{
    Clientes(4);
    Recordset r = s.clientes->OpenRecordset("select * from clientes order by idc");
    r.MoveNext();
    r.Delete();
    EXPECT_EQ(r.RecordCount(), 3);
    EXPECT_EQ(numberOf([&] { r["idc"]; }), ErrorNumber::NoCurrentRecord);
    r.MoveNext();
    EXPECT_EQ(r["idc"].toInt(), 3);
    r.MovePrevious();
    EXPECT_EQ(r["idc"].toInt(), 1); // the deleted row is skipped
    r.FindFirst("idc = ?", 2);
    EXPECT_TRUE(r.NoMatch());
    EXPECT_EQ(allRows(*s.clientes, "select idc from clientes order by idc"), u"1\n3\n4\n"_s);
}

TEST_F(Store, UpdateWritesOnlyWhatChangedAlsoThroughAJoin)
{
    Client(1, u"Ruiz"_s);
    s.clientes->Execute("insert into Mascotas (idm, idc, nom) values (10, 1, 'Luna')");
    Recordset r = s.clientes->OpenRecordset(
        "select * from mascotas inner join clientes on mascotas.idc = clientes.idc");
    // Meanwhile another terminal changes another column of the same rows.
    s.clientes->Execute("update clientes set dir = ? where idc = 1", u"Mitre 100"_s);
    r.Edit();
    r.Put("ayn", u"Ruiz Ana"_s);
    r.Put("tarea", true);
    r.Put("dir", QString()); // the column was Null, so this is a change and is written
    EXPECT_EQ(r["ayn"].toText(), u"Ruiz Ana"_s);
    r.CancelUpdate();
    EXPECT_EQ(r["ayn"].toText(), u"Ruiz"_s);

    r.Edit();
    r.Put("ayn", u"Ruiz Ana"_s);
    r.Put("tarea", true);
    r.Update();
    EXPECT_EQ(allRows(*s.clientes, "select ayn, dir from clientes"), u"Ruiz Ana|Mitre 100\n"_s);
    EXPECT_EQ(allRows(*s.clientes, "select nom, tarea from mascotas"), u"Luna|-1\n"_s);
    EXPECT_EQ(r["tarea"].toBool(), true);

    Recordset photo = s.clientes->OpenSnapshot("select * from clientes");
    EXPECT_NE(numberOf([&] { photo.Edit(); }), 0);
    // A row that another terminal deleted cannot be changed silently.
    s.clientes->Execute("delete * from clientes");
    EXPECT_EQ(numberOf([&] { r.Edit(); }), ErrorNumber::NoCurrentRecord);
}

TEST_F(Store, AnEditThatWasNotWrittenReachesNoOtherRow)
{
    Clientes(3);
    Recordset r = s.clientes->OpenRecordset("select idc, ayn from clientes order by idc");
    const std::pair<const char *, std::function<void()>> movements[] = {
        {"MoveNext", [&] { r.MoveNext(); }},
        {"MoveLast", [&] { r.MoveLast(); }},
        {"MovePrevious", [&] { r.MovePrevious(); }},
        {"MoveFirst", [&] { r.MoveFirst(); }},
        {"FindFirst", [&] { r.FindFirst("idc = ?", 2); }},
        {"AbsolutePosition", [&] { r.AbsolutePosition(2); }},
        {"Requery", [&] { r.Requery(); }},
    };
    for (const auto &[name, mover] : movements) {
        r.Edit();
        r.Put("ayn", u"lost"_s);
        mover();
        EXPECT_EQ(r["ayn"].toText(), u"C%1"_s.arg(r["idc"].toInt())) << name;
        EXPECT_NE(numberOf([&] { r.Update(); }), 0) << name;
    }
    EXPECT_EQ(allRows(*s.clientes, "select ayn from clientes"), u"C1\nC2\nC3\n"_s);

    r.Close();
    EXPECT_FALSE(r.isOpen());
    EXPECT_EQ(numberOf([&] { r.MoveFirst(); }), ErrorNumber::NoCurrentRecord);
    EXPECT_NE(numberOf([&] { r["ayn"]; }), 0);
}

TEST_F(Store, ValuesCrossTyped)
{
    s.clientes->Execute("insert into consumo (idm, idcat, can, con, men) values (1, 1, ?, ?, ?)",
                        Moneda::fromTenThousandths(12345), 0.30004, true);
    const Recordset r = s.clientes->OpenSnapshot("select * from consumo");
    EXPECT_EQ(r["can"].toMoneda(), Moneda::fromTenThousandths(12345));
    EXPECT_EQ(r["con"].toMoneda(), Moneda::fromTenThousandths(3000)); // rounded in the statement
    EXPECT_TRUE(r["men"].is<bool>() && r["men"].toBool());
    EXPECT_TRUE(r["ida"].isNull());

    s.morvane->Execute("insert into TareasAgenda (id, dia, hor, est) values (1, ?, ?, 0)",
                       QDate(2026, 2, 28), QTime(8, 5));
    const Recordset t = s.morvane->OpenSnapshot("select dia, hor from TareasAgenda");
    EXPECT_EQ(t["dia"], Value(QDate(2026, 2, 28)));
    EXPECT_EQ(t["hor"], Value(QTime(8, 5)));
}

TEST_F(Store, MemosThatLookLikeNumbersKeepTheirLetters)
{
    const auto saved = [this] { return s.clientes->read("select obs from clientes").toText(); };
    for (const QString &memo :
         {u"0341"_s, u" 12 "_s, u"1e5"_s, u"+54"_s, u"4251111"_s, u"nota"_s}) {
        s.clientes->Execute("delete * from clientes");
        s.clientes->Execute("insert into Clientes (idc, obs) values (1, ?)", memo);
        EXPECT_EQ(saved(), memo);
        Recordset r = s.clientes->OpenRecordset("select * from clientes");
        r.Edit();
        r.Put("obs", memo + u'0');
        r.Update();
        EXPECT_EQ(saved(), memo + u'0');
        r = s.clientes->OpenSnapshot("select idc from clientes where obs like ?", memo + u'*');
        EXPECT_EQ(r.RecordCount(), 1);
    }
}

TEST_F(Store, HostileTextIsStoredAndFoundAsItIs)
{
    int idc = 0;
    for (const QString &name : {u"O'Higgins \"x\"; drop table clientes --"_s, u"a*b"_s, u"[a]"_s,
                                u"50% _"_s, u"🐶 Ñandú"_s, u"x"_s.repeated(50), u" "_s}) {
        Client(++idc, name);
        EXPECT_EQ(s.clientes->read("select idc from clientes where ayn = ?", name).toInt(), idc);
        s.lists.clientes.FindFirst("ayn = ?", name);
        EXPECT_EQ(s.lists.clientes["idc"].toInt(), idc);
    }
    EXPECT_EQ(BuscarIdPorTexto(s, "clientes", "clientes", "ayn", u"a[*]B"_s, "idc"), 2);
    EXPECT_EQ(BuscarIdPorTexto(s, "clientes", "clientes", "ayn", u"*ñANDÚ"_s, "idc"), 5);
    EXPECT_EQ(BuscarIdPorTexto(s, "clientes", "clientes", "ayn", u"nobody"_s, "idc"), 0);
}

TEST_F(Store, ListsNoticeWhatIsWrittenHereThereAndTakenBack)
{
    Client(1, u"Uno"_s);
    EXPECT_EQ(nameOf(s), u"Uno"_s);
    rename(u"Dos"_s);
    EXPECT_EQ(nameOf(s), u"Dos"_s);
    {
        Lote lote(s);
        rename(u"Nunca"_s);
        EXPECT_EQ(nameOf(s), u"Nunca"_s);
    }
    EXPECT_EQ(nameOf(s), u"Dos"_s);

    Sesion other(ask, impresion, Language::English);
    setDataFolder(other, folder.path());
    ASSERT_FALSE(openStore(other));
    EXPECT_EQ(nameOf(other), u"Dos"_s);
    rename(u"Tres"_s);
    s.morvane->Execute("update configuracion set KgLbs = 2");
    EXPECT_TRUE(eventually([&] { return nameOf(other) == u"Tres"; }));
    EXPECT_EQ(other.configuracion["KgLbs"].toInt(), 2);
    // The other session's list now has the row; its own write keeps it current without a read.
    Recordset &list = other.lists.clientes;
    list.FindFirst("idc = ?", 1);
    list.Edit();
    list.Put("ayn", u"Cuatro"_s);
    list.Update();
    list.FindFirst("ayn = ?", u"CUATRO"_s);
    EXPECT_FALSE(list.NoMatch());
    // But it becomes stale when another session writes something else meanwhile.
    Client(2, u"Dora"_s);
    EXPECT_TRUE(eventually([&] { return list.lookUp("idc = ?", 2, "ayn").has_value(); }));
    list.Edit();
    const qint64 before = other.clientes->version("clientes");
    s.clientes->Execute("update clientes set ayn = 'Eva' where idc = 2");
    EXPECT_TRUE(eventually([&] { return other.clientes->version("clientes") != before; }));
    list.Put("obs", u"x"_s);
    list.Update();
    EXPECT_EQ(list.lookUp("idc = ?", 2, "ayn"), std::optional<Value>(u"Eva"_s));
}

TEST_F(Store, AListStaysOnItsRowWhileOthersComeAndGo)
{
    for (int i = 2; i <= 4; ++i)
        Client(i, u"C%1"_s.arg(i));
    Recordset &list = s.lists.clientes;
    list.FindFirst("idc = ?", 3);
    Client(1, u"C1"_s);
    EXPECT_EQ(list["ayn"].toText(), u"C3"_s);
    s.clientes->Execute("delete * from clientes where idc < 3");
    EXPECT_EQ(list["ayn"].toText(), u"C3"_s);
    // A deleted row must not read as the next client.
    s.clientes->Execute("delete * from clientes where idc = 3");
    EXPECT_EQ(numberOf([&] { list["ayn"]; }), ErrorNumber::NoCurrentRecord);
    list.FindFirst("idc = ?", 4);
    EXPECT_EQ(list["ayn"].toText(), u"C4"_s);
}

TEST_F(Store, FindFirstGivesTheFirstRowWhicheverWayItLooks)
{
    Client(5, u"Ágata"_s);
    Client(3, u"ágata"_s);
    Client(9, u"Agata"_s);
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

    EXPECT_TRUE(BuscarEnLista(s.lists.clientes, u"ÁGA"_s, "ayn", true));
    EXPECT_FALSE(BuscarEnLista(s.lists.clientes, u"ÁGA"_s, "ayn"));
    EXPECT_TRUE(BuscarEnLista(s.lists.clientes, 9, "idc"));
    EXPECT_FALSE(BuscarEnLista(s.lists.clientes, hoy, "feci"));
    EXPECT_FALSE(BuscarEnLista(s.lists.proveedores, 1, "idp"));
}

TEST_F(Store, LookUpsReachEachTableByItsKeyAndMissWithNothing)
{
    s.clientes->Execute("insert into CLMarketing (id, nom) values (3, ?)", u"Radio"_s);
    EXPECT_EQ(LeerCampo(s, "clientes", "clmarketing", 3, "nom"), u"Radio"_s);
    EXPECT_EQ(LeerCampo(s, "clientes", "mlespecies", 2, "nom"), u"Felino"_s);
    EXPECT_EQ(LeerCampo(s, "clientes", "mlespecies", 77, "nom"), QString());
    s.os->Execute("insert into planes (nom, monto) values (?, 15.5)", u"Plan 1"_s);
    EXPECT_EQ(LeerCampo(s, "os", "planes", 1, "nom"), u"Plan 1"_s);
    EXPECT_EQ(BuscarIdPorTexto(s, "os", "planes", "nom", u"plan*"_s, "id"), 1);

    EXPECT_TRUE(ExisteNombre(s, "finanzas", "flcategorias",
                             LeerCampo(s, "finanzas", "flcategorias", 3, "nom").toUpper()));
    EXPECT_FALSE(ExisteNombre(s, "finanzas", "flcategorias", u"none such"_s));
    EXPECT_EQ(QuitarApostrofes(u"O'Hi'"_s), u"O Hi "_s);
    ask.wait(u"Can not use the character (')"_s);
    int key = '\'';
    FiltrarApostrofe(s, key);
    EXPECT_EQ(key, 0);
}

TEST_F(Store, ABatchIsAllOrNothingOverEveryDatabase)
{
    {
        Lote lote(s);
        Client(1, u"Uno"_s);
        s.morvane->Execute("insert into perfiles (idc) values (1)");
        {
            Lote inside(s);
            s.finanzas->Execute("insert into UsoInterno (ida) values (1)");
            inside.commit(); // only the outermost commits
        }
    }
    EXPECT_EQ(s.clientes->read("select count(*) from clientes").toInt(), 0);
    EXPECT_EQ(s.morvane->read("select count(*) from perfiles").toInt(), 0);
    EXPECT_EQ(s.finanzas->read("select count(*) from UsoInterno").toInt(), 0);
}

TEST_F(Store, IdentifiersStopAtTheEndOfTheirRangeAndWriteNothing)
{
    s.morvane->Execute("update configuracion set contadorclientes = 32766");
    EXPECT_EQ(takeIdentifier(s, "contadorclientes", Highest16BitId), 32767);
    EXPECT_EQ(numberOf([&] { takeIdentifier(s, "contadorclientes", Highest16BitId); }),
              ErrorNumber::Overflow);
    EXPECT_EQ(s.morvane->read("select contadorclientes from configuracion").toInt(), 32767);
    // A rolled-back batch returns its number; the next one comes from the file.
    {
        Lote lote(s);
        EXPECT_EQ(takeIdentifier(s, "contadorraza"), 1);
    }
    EXPECT_EQ(takeIdentifier(s, "contadorraza"), 1);
    EXPECT_EQ(takeIdentifier(s, "contadorraza"), 2);
}

TEST_F(Store, ColumnsAreAddedChangedAndDroppedWithTheirRows)
{
    s.finanzas->Execute("insert into Ventas (idventa, tfac, tot) values (7, 'A', 12.5)");
    s.finanzas->Execute("ALTER TABLE Ventas ADD COLUMN Nueva YESNO");
    s.finanzas->Execute("ALTER TABLE Ventas ALTER COLUMN tfac TEXT(25)");
    EXPECT_EQ(numberOf([&] { s.finanzas->Execute("ALTER TABLE Ventas ADD COLUMN NUEVA LONG"); }),
              ErrorNumber::ColumnExists);
    EXPECT_EQ(
        numberOf([&] { s.finanzas->Execute("ALTER TABLE Ventas ALTER COLUMN hora TEXT(25)"); }),
        ErrorNumber::NotInCollection);
    EXPECT_EQ(allRows(*s.finanzas, "select idventa, tfac, tot, Nueva from Ventas"),
              u"7|A|12.5|0\n"_s);
    EXPECT_EQ(s.finanzas->widthOf("ventas", "TFAC"), 25);
    EXPECT_EQ(s.finanzas->trimmed("ventas", "tfac", u"x"_s.repeated(26)).size(), 25);
    EXPECT_EQ(s.clientes->trimmed("clientes", "obs", u"x"_s.repeated(999)).size(), 999); // memo
    s.finanzas->Execute("ALTER TABLE Ventas DROP COLUMN Nueva");
    EXPECT_EQ(numberOf([&] { s.finanzas->read("select nueva from ventas"); }),
              ErrorNumber::Parameters);
    EXPECT_FALSE(s.motor->describe("finanzas", "Ventas").indexes.empty());

    s.finanzas->Execute("CREATE TABLE Viejos (nom TEXT(10))");
    s.finanzas->Execute("insert into Viejos (nom) values ('a')");
    s.finanzas->Execute("ALTER TABLE Viejos ADD COLUMN ID COUNTER");
    s.finanzas->Execute("insert into Viejos (nom) values ('b')");
    EXPECT_EQ(allRows(*s.finanzas, "select ID, nom from Viejos order by id"), u"1|a\n2|b\n"_s);
    EXPECT_EQ(numberOf([&] { s.finanzas->Execute("CREATE TABLE viejos (x LONG)"); }),
              ErrorNumber::TableExists);
}

TEST_F(Store, DefinitionsTakeDefaultsNeedsIndexesAndSeveralColumns)
{
    Base &b = *s.finanzas;
    b.Execute("CREATE TABLE Nueva (n LONG DEFAULT -7 NOT NULL, t TEXT(5) DEFAULT 'o''k', "
              "d DATE DEFAULT #3/11/2026#, y YESNO DEFAULT TRUE, m CURRENCY DEFAULT 1.5)");
    b.Execute("insert into Nueva (t) values ('one')");
    b.Execute("insert into Nueva (n) values (2)");
    // Existing rows get the defaults too, and rebuilding the table keeps everything.
    b.Execute("ALTER TABLE Nueva ADD COLUMN p LONG NOT NULL DEFAULT 3, q TEXT(4)");
    b.Execute("ALTER TABLE Nueva ALTER COLUMN t TEXT(9)");
    b.Execute("insert into Nueva (t) values ('three')");
    EXPECT_EQ(allRows(b, "select n, t, d, y, m, p, q from Nueva"),
              u"-7|one|2026-03-11|-1|1.5|3|\n2|o'k|2026-03-11|-1|1.5|3|\n"
              "-7|three|2026-03-11|-1|1.5|3|\n"_s);
    const auto refused = [&](const char *sql) { return numberOf([&] { b.Execute(sql); }); };
    EXPECT_EQ(refused("insert into Nueva (n) values (null)"), ErrorNumber::NullNotTaken);
    EXPECT_EQ(refused("ALTER TABLE Nueva ADD COLUMN r LONG DEFAULT 'x'"),
              ErrorNumber::TypeMismatch);

    // Two tables can have indexes of the same name.
    b.Execute("CREATE UNIQUE INDEX PorTexto ON Nueva (t, n)");
    b.Execute("CREATE INDEX PorTexto ON Ventas (tfac)");
    EXPECT_EQ(refused("insert into Nueva (t) values ('ONE')"), ErrorNumber::Key);
    b.Execute("DROP INDEX PorTexto ON Nueva");
    EXPECT_EQ(refused("insert into Nueva (t) values ('ONE')"), 0);
    EXPECT_EQ(refused("CREATE INDEX x ON Nueva (nobody)"), ErrorNumber::NotInCollection);

    // Several columns are added and dropped together or not at all.
    EXPECT_EQ(refused("ALTER TABLE Nueva ADD COLUMN r LONG, q LONG"), ErrorNumber::ColumnExists);
    EXPECT_EQ(refused("select r from Nueva"), ErrorNumber::Parameters);
    b.Execute("ALTER TABLE Nueva DROP COLUMN p, q");
    EXPECT_EQ(refused("select p from Nueva"), ErrorNumber::Parameters);
}

TEST_F(Store, WhatIsRefusedIsToldInTheUsersLanguageWithTheColumn)
{
    const std::pair<const char *, int> refused[] = {
        {"insert into Clientes (idc) values (70000)", text::ValueIsOutOfRange},
        {"insert into Clientes (idc) values ('x')", text::ValueIsOfAnotherKind}};
    for (const auto &[sql, told] : refused) {
        try {
            s.clientes->Execute(sql);
            ADD_FAILURE() << sql;
        } catch (const StoreError &e) {
            EXPECT_EQ(errorText(s, e), s(told).arg(u"idc"_s)) << sql;
        }
    }
    try {
        s.clientes->Execute("update Clientes set nobody = 1");
        ADD_FAILURE();
    } catch (const StoreError &e) {
        EXPECT_EQ(errorText(s, e), e.description); // there is no better text
    }
}

TEST_F(Store, TheMarkFindsTheFolderThatIsReallyWritten)
{
    // The session's folder is a candidate; the program folder has no databases here.
    s.programFolder = folder.path() + u"/programa/"_s;
    QDir().mkpath(s.programFolder);
    EXPECT_EQ(RutaRealDeDatos(s), s.dataFolder);
    EXPECT_EQ(s.morvane->read("select count(*) from TareasAgenda").toInt(), 0);
    EXPECT_EQ(s.configuracion["contadorTareas"].toInt(), 0); // the number was not taken
    writePath(s.programFolder, u"/otra/parte"_s);
    EXPECT_EQ(RutaRealDeDatos(s), s.dataFolder); // a folder given on the command line wins
    s.givenFolder = false;
    EXPECT_EQ(RutaRealDeDatos(s), u"/otra/parte/"_s);
}

TEST(Moneda, RoundsHalfToEvenAndReadsWhatUsersType)
{
    EXPECT_EQ(Moneda::round(1.00005).tenThousandths(), 10000);
    EXPECT_EQ(Moneda::round(1.00015).tenThousandths(), 10002);
    EXPECT_EQ(Moneda::round(-0.00015).tenThousandths(), -2);
    EXPECT_EQ((Moneda::round(0.3) - Moneda::round(0.1) * 3), Moneda());
    EXPECT_EQ((Moneda::round(2.5) * Moneda::round(0.0001)).tenThousandths(), 2);
    EXPECT_EQ(Moneda::fromText(u"12,5"_s, u','), Moneda::fromTenThousandths(125000));
    EXPECT_EQ(Moneda::fromText(u"1.5"_s, u','), std::nullopt);
    EXPECT_EQ(Moneda::fromText(u"1e400"_s), std::nullopt);
    EXPECT_EQ(Moneda::fromTenThousandths(-2500).toText(), u"-0.25"_s);
    EXPECT_EQ(Moneda::round(1e300).tenThousandths(), std::numeric_limits<qint64>::max());
}
