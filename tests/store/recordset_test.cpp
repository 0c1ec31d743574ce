// Recordsets while definitions, other terminals and batches change the tables underneath.

#include "store/lookups.h"
#include "store/schema.h"
#include "store/sqlcipher/connection.h"
#include "support/clinic.h"
#include "support/server_engine.h"

#include <QProcess>
#include <QThread>

using namespace store;
using namespace Qt::StringLiterals;

namespace
{

class rows : public Clinic
{
protected:
    rows()
    {
        for (const int idc : {1, 2, 3, 4})
            s.clientes->Execute("insert into Clientes (idc, ayn) values (?, ?)", idc,
                                u"C%1"_s.arg(idc));
    }

    int numberOf(const std::function<void()> &f)
    {
        try {
            f();
        } catch (const StoreError &e) {
            return e.number;
        }
        return 0;
    }

    /// Opens the clients' file without the store, like another program.
    sqlcipher::Connection openRaw()
    {
        return sqlcipher::openFile(folder.filePath(u"clientes.mdb"_s), false);
    }
    void runRaw(const std::string &sql) { sqlcipher::run(openRaw().get(), sql); }

    QString names() { return allRows(*s.clientes, "select idc, ayn from Clientes order by idc"); }

    /// Another terminal on the same folder.
    struct Terminal {
        TestDialogs ask;
        TestPrinting printing;
        Sesion s{ask, printing, Language::English};
        explicit Terminal(const QString &folder)
        {
            setDataFolder(s, folder);
            if (openStore(s))
                ADD_FAILURE() << "not opened";
        }
    };

    static void rename(Recordset &r, const QString &name)
    {
        r.Edit();
        r.Put("ayn", name);
        r.Update();
    }
};

constexpr const char *Sorted = "select * from Clientes order by idc";

} // namespace

TEST_F(rows, ADefinitionNeverTurnsAWriteToAnotherRow)
{
    s.clientes->Execute("delete * from Clientes where idc = 1");
    const std::pair<const char *, const char *> definitions[] = {
        {"ALTER TABLE Clientes ADD COLUMN Extra LONG", "ALTER TABLE Clientes DROP COLUMN Extra"},
        {"ALTER TABLE Clientes ALTER COLUMN email TEXT(200)",
         "ALTER TABLE Clientes ALTER COLUMN email TEXT(160)"},
    };
    int n = 0;
    for (const auto &[there, back] : definitions)
        for (const bool byAnother : {false, true})
            for (const char *definition : {there, back}) {
                SCOPED_TRACE(std::string(definition) + (byAnother ? " elsewhere" : " here"));
                Recordset &list = s.lists.clientes;
                list.FindFirst("idc = ?", 3);
                list.MoveNext();
                list.MovePrevious();
                Recordset r = s.clientes->OpenRecordset(Sorted);
                r.MoveNext();
                if (byAnother) {
                    Terminal other(folder.path());
                    other.s.clientes->Execute(definition);
                    QThread::msleep(250);
                } else {
                    s.clientes->Execute(definition);
                }
                rename(r, u"r%1"_s.arg(++n));
                EXPECT_EQ(names(), u"2|C2\n3|r%1\n4|C4\n"_s.arg(n));
                rename(list, u"l%1"_s.arg(n));
                EXPECT_EQ(names(), u"2|C2\n3|l%1\n4|C4\n"_s.arg(n));
            }
}

TEST_F(rows, AnOpenEditOutlivesADefinition)
{
    Recordset r = s.clientes->OpenRecordset("select idc, ayn, * from Clientes order by idc");
    r.MoveNext();
    r.Edit();
    r.Put("ayn", u"Two"_s);
    s.clientes->Execute("ALTER TABLE Clientes ADD COLUMN Extra LONG");
    r.Update();
    EXPECT_EQ(names(), u"1|C1\n2|Two\n3|C3\n4|C4\n"_s);
    EXPECT_EQ(r.Column("Extra"), r.allColumns() - 1);
    // A value put into a column that was dropped is not written anywhere.
    r.Edit();
    r.Put("Extra", 5);
    s.clientes->Execute("ALTER TABLE Clientes DROP COLUMN Extra");
    EXPECT_EQ(numberOf([&] { r.Update(); }), ErrorNumber::NotInCollection);
}

TEST_F(rows, AKeyIsKeptAndNeverGivenOutAgain)
{
    EXPECT_EQ(numberOf([&] { s.clientes->read("select row_key from Clientes"); }),
              ErrorNumber::Parameters);
    Recordset stale = s.clientes->OpenRecordset(Sorted);
    stale.MoveLast();
    for (const char *between : {"", "ALTER TABLE Clientes ALTER COLUMN email TEXT(160)"}) {
        s.clientes->Execute("delete * from Clientes where idc = 4");
        if (*between)
            s.clientes->Execute(between);
        s.clientes->Execute("insert into Clientes (idc, ayn) values (4, 'stranger')");
        EXPECT_EQ(numberOf([&] { stale.Edit(); }), ErrorNumber::NoCurrentRecord) << between;
    }
    // A declared counter keeps its keys in the same way.
    s.clientes->Execute("create table T (id COUNTER, n LONG)");
    for (int i = 0; i < 3; ++i)
        s.clientes->Execute("insert into T (n) values (?)", i);
    s.clientes->Execute("delete * from T where id <> 2");
    s.clientes->Execute("alter table T alter column n DOUBLE");
    s.clientes->Execute("insert into T (n) values (9)");
    EXPECT_EQ(allRows(*s.clientes, "select * from T"), u"2|1\n4|9\n"_s);
    // When it is dropped the hidden key takes over, and vice versa.
    Recordset r = s.clientes->OpenRecordset("select n from T order by n desc");
    r.MoveLast();
    s.clientes->Execute("alter table T drop column id");
    EXPECT_EQ(r["n"].toInt(), 1) << "it stays on its row";
    r.Edit();
    r.Put("n", 10);
    r.Update();
    s.clientes->Execute("alter table T add column num COUNTER");
    EXPECT_EQ(allRows(*s.clientes, "select num, n from T"), u"2|10\n4|9\n"_s);
}

TEST_F(rows, ATableOfOldIsGivenAKeyWithAllThatItHas)
{
    Motor &engine = *s.motor;
    const auto makeOld = [&] {
        runRaw("CREATE TABLE Old (a TEXT(5) DEFAULT 'x', [b c] LONG DEFAULT 3);"
               "CREATE INDEX OldA ON Old (a COLLATE NOCASE);"
               "INSERT INTO Old (rowid, a) VALUES (3, 'p'), (7, 'q'), (5, 'r')");
    };
    makeOld();
    // As if by another program.
    EXPECT_TRUE(
        eventually([&] { return numberOf([&] { s.clientes->read("select a from Old"); }) == 0; }));
    {
        // Until it gets a key, its rows are identified by the engine's row numbers.
        Recordset r = s.clientes->OpenRecordset("select * from Old");
        EXPECT_EQ(r.RecordCount(), 3);
        r.Edit();
        r.Put("a", u"P"_s);
        r.Update();
    }
    EXPECT_FALSE(engine.describe("clientes", "Old").keyed);
    engine.giveKey("clientes", "Old");
    EXPECT_TRUE(engine.describe("clientes", "Old").keyed);
    EXPECT_TRUE(eventually(
        [&] { return allRows(*s.clientes, "select * from Old") == u"P|3\nr|3\nq|3\n"; }));
    EXPECT_EQ(engine.describe("clientes", "Old").indexes, std::vector<std::string>{"OldA"});
    s.clientes->Execute("insert into Old ([b c]) values (1)");
    EXPECT_EQ(allRows(*s.clientes, "select a from Old where [b c] = 1"), u"x\n"_s);
    const auto db = openRaw();
    const auto st = sqlcipher::prepare(
        db.get(), "SELECT group_concat(row_key) FROM (SELECT row_key FROM Old ORDER BY row_key)");
    ASSERT_EQ(sqlite3_step(st.get()), SQLITE_ROW);
    EXPECT_STREQ(reinterpret_cast<const char *>(sqlite3_column_text(st.get(), 0)), "3,5,7,8");
}

TEST_F(rows, EditSeesWhatStandsThereNow)
{
    s.finanzas->Execute("insert into Articulos (ida, nom, can) values (900, 'A', 10)");
    Recordset r = s.finanzas->OpenRecordset("select * from Articulos where ida = 900");
    Terminal other(folder.path());
    const auto setElsewhere = [&](int can) {
        other.s.finanzas->Execute("update Articulos set can = ? where ida = 900", can);
    };
    const auto stock = [&] {
        return s.finanzas->read("select can from Articulos where ida = 900").toInt();
    };
    setElsewhere(7);
    r.Edit();
    r.Put("can", r["can"].toMoneda() - Moneda::whole(1));
    r.Update();
    EXPECT_EQ(stock(), 6);

    // Putting the value known from before Edit is still a write.
    setElsewhere(3);
    r.Edit();
    r.Put("can", 6);
    r.Update();
    EXPECT_EQ(stock(), 6);

    // Changed between Edit and Update: refused, and the edit stays open.
    r.Edit();
    r.Put("nom", u"B"_s);
    r.Put("can", 5);
    setElsewhere(4);
    try {
        r.Update();
        ADD_FAILURE() << "written";
    } catch (const StoreError &e) {
        EXPECT_EQ(e.number, ErrorNumber::Conflict);
        EXPECT_TRUE(e.description.contains(u"\"can\""_s)) << e.what();
    }
    EXPECT_EQ(allRows(*s.finanzas, "select nom, can from Articulos where ida = 900"), u"A|4\n"_s);
    EXPECT_EQ(r["can"].toInt(), 5);
    r.Edit();
    EXPECT_EQ(r["can"].toInt(), 4);
    r.Put("can", 4); // no change, but still refused once another terminal changes it
    setElsewhere(2);
    EXPECT_EQ(numberOf([&] { r.Update(); }), ErrorNumber::Conflict);
    r.CancelUpdate();

    // A change of another column is no conflict.
    r.Edit();
    r.Put("nom", u"C"_s);
    setElsewhere(1);
    r.Update();
    EXPECT_EQ(allRows(*s.finanzas, "select nom, can from Articulos where ida = 900"), u"C|1\n"_s);

    r.Edit();
    r.Put("nom", u"D"_s);
    other.s.finanzas->Execute("delete * from Articulos where ida = 900");
    EXPECT_EQ(numberOf([&] { r.Update(); }), ErrorNumber::NoCurrentRecord);
    EXPECT_EQ(numberOf([&] { r.Edit(); }), ErrorNumber::NoCurrentRecord);
}

TEST_F(rows, EveryKindOfValueIsRecognizedAsUnchanged)
{
    s.clientes->Execute("create table K (b BYTE, x DOUBLE, g SINGLE, m CURRENCY, d DATE, h TIME, y "
                        "YESNO, t TEXT(50), o MEMO)");
    s.clientes->Execute("insert into K (b, x, g, m, d, h, y, t, o) values (7, 0.1, 0.3, 12.3456, "
                        "#3/11/2026#, #09:05#, true, "
                        "'0341', '0341')");
    s.clientes->Execute("insert into K (b) values (8)");
    runRaw("INSERT INTO K (b, x, m, d, o) VALUES ('odd', 'x', 2, 'soon', 341)");
    Recordset r = s.clientes->OpenRecordset("select * from K");
    for (; !r.EOF_(); r.MoveNext()) {
        r.Edit();
        r.Put("b", 1);
        r.Put("x", 1.5);
        r.Put("g", 1.5);
        r.Put("m", 1.5);
        r.Put("d", hoy);
        r.Put("h", QTime(1, 2));
        r.Put("y", false);
        r.Put("t", u"t"_s);
        r.Put("o", u"12"_s);
        EXPECT_EQ(numberOf([&] { r.Update(); }), 0) << r.AbsolutePosition();
    }
    EXPECT_EQ(s.clientes->read("select count(*) from K where b = 1 and o = '12' and y = 0").toInt(),
              3);
}

TEST_F(rows, AJoinIsWrittenWholeOrNotAtAll)
{
    s.clientes->Execute("insert into Mascotas (idm, idc, nom) values (10, 1, 'Luna')");
    Recordset r = s.clientes->OpenRecordset(
        "select * from Mascotas inner join Clientes on Mascotas.idc = Clientes.idc");
    r.Edit();
    r.Put("Mascotas.nom", u"Sol"_s);
    r.Put("ayn", u"One"_s);
    s.clientes->Execute("update Clientes set ayn = 'Uno' where idc = 1");
    EXPECT_EQ(numberOf([&] { r.Update(); }), ErrorNumber::Conflict);
    EXPECT_EQ(s.clientes->read("select nom from Mascotas").toText(), u"Luna"_s);
    r.Edit();
    r.Put("Mascotas.nom", u"Sol"_s);
    r.Put("ayn", u"One"_s);
    r.Update();
    EXPECT_EQ(allRows(*s.clientes, "select nom, ayn from Mascotas inner join Clientes on "
                                   "Mascotas.idc = Clientes.idc"),
              u"Sol|One\n"_s);
}

TEST_F(rows, ARowIsAddedBehindTheOthersAndItsKeyIsKnown)
{
    s.finanzas->Execute("insert into TiposFiscal (Nombre) values ('zero')");
    Recordset r = s.finanzas->OpenRecordset("select * from TiposFiscal where Nombre <> 'none'");
    const int before = r.RecordCount();
    r.AddNew();
    r.Put("Nombre", u"one"_s);
    r.Update();
    EXPECT_EQ(r.addedKey(), s.finanzas->read("select max(ID) from TiposFiscal").toLong());
    EXPECT_EQ(r.RecordCount(), before + 1);
    r.MoveLast();
    EXPECT_EQ(r["ID"].toLong(), r.addedKey());
    EXPECT_EQ(r["Nombre"].toText(), u"one"_s);
    r.FindFirst("Nombre = 'one'");
    EXPECT_FALSE(r.NoMatch());

    // It is read with its defaults, and a list puts it in its place in the order.
    Recordset &list = s.lists.flcategorias;
    list.MoveLast();
    list.AddNew();
    list.Put("idcat", 99);
    list.Put("nom", u" first"_s);
    list.Update();
    list.MoveFirst();
    EXPECT_EQ(list["idcat"].toInt(), 99);
    EXPECT_EQ(list["CatPerfil"], Value(false));
}

TEST_F(rows, AWalkEndsWhateverIsDoneToItsList)
{
    Recordset &list = s.lists.clientes;
    const std::pair<const char *, std::function<void()>> meddling[] = {
        {"looked up", [&] { LeerCampo(s, "clientes", "clientes", 1, "ayn"); }},
        {"changed", [&] { s.clientes->Execute("update Clientes set dir = 'x' where idc = 1"); }},
        {"deleted",
         [&] { s.clientes->Execute("delete * from Clientes where idc = ?", list["idc"]); }},
    };
    for (const auto &[what, meddle] : meddling) {
        QString seen;
        int steps = 0;
        for (list.MoveFirst(); !list.EOF_() && ++steps < 20; list.MoveNext()) {
            seen += list["idc"].toText();
            meddle();
        }
        EXPECT_EQ(seen, u"1234"_s) << what;
    }
}

TEST_F(rows, WhatABatchTookBackIsNotShown)
{
    Recordset r = s.clientes->OpenRecordset(Sorted);
    {
        Lote batch(s);
        rename(r, u"never"_s);
        r.AddNew();
        r.Put("idc", 5);
        r.Update();
    }
    EXPECT_EQ(r["ayn"].toText(), u"C1"_s);
    EXPECT_EQ(r.RecordCount(), 4);
    r.MoveLast();
    EXPECT_EQ(r["ayn"].toText(), u"C4"_s);
}

TEST_F(rows, ARecordsetOfAClosedDatabaseSaysSo)
{
    Recordset r = s.os->OpenRecordset("select * from planes");
    Recordset walk = s.os->OpenForwardOnly("select * from planes");
    closeStore(s);
    for (const auto &use : std::initializer_list<std::function<void()>>{
             [&] { r.Requery(); }, [&] { r.MoveFirst(); }, [&] { r["nom"]; }, [&] { r.Edit(); },
             [&] { r.AddNew(); }, [&] { r.FindFirst("id = 1"); }, [&] { walk.MoveNext(); }})
        EXPECT_EQ(numberOf(use), ErrorNumber::NoCurrentRecord);
}

TEST_F(rows, NamesAndNumbersOfColumnsAreChecked)
{
    Recordset r = s.clientes->OpenSnapshot(Sorted);
    for (const int column : {-1, r.allColumns()}) {
        EXPECT_EQ(numberOf([&] { r[column]; }), ErrorNumber::NotInCollection);
        EXPECT_EQ(numberOf([&] { r.nameOf(column); }), ErrorNumber::NotInCollection);
    }
    EXPECT_NO_THROW(r[r.allColumns() - 1]);
    EXPECT_EQ(numberOf([&] { LeerCampo(s, "clientes", "cliente", 1, "ayn"); }),
              ErrorNumber::TableNotFound);
    EXPECT_NE(numberOf([&] { s.clientes->Execute("ALTER TABLE None ADD COLUMN x LONG"); }), 0);
    EXPECT_EQ(numberOf([&] { s.clientes->Execute(""); }), ErrorNumber::Syntax);
}

TEST_F(rows, APartOfABatchIsTakenBackByItself)
{
    const auto set = [this](int can) {
        s.clientes->Execute("update Clientes set ayn = ? where idc = 1", u"%1"_s.arg(can));
    };
    const auto now = [this] { return LeerCampo(s, "clientes", "clientes", 1, "ayn"); };
    {
        Lote outer(s);
        set(1);
        {
            Lote inner(s);
            set(2);
            {
                Lote innermost(s);
                set(3);
                innermost.commit();
            }
            EXPECT_EQ(now(), u"3"_s);
        }
        EXPECT_EQ(now(), u"1"_s);
        const auto failed = attempt(s, [&] {
            set(4);
            s.clientes->Execute("insert into Clientes (idc) values ('x')");
        });
        ASSERT_TRUE(failed);
        EXPECT_EQ(failed->number, ErrorNumber::TypeMismatch);
        EXPECT_EQ(now(), u"1"_s);
        EXPECT_FALSE(
            attempt(s, [&] { s.clientes->Execute("delete * from Clientes where idc = 4"); }));
        EXPECT_THROW(attempt(s, [] { throw StoreError(ErrorNumber::FullDisk, {}); }), StoreError);
        outer.commit();
    }
    EXPECT_EQ(names(), u"1|1\n2|C2\n3|C3\n"_s);
}

TEST_F(rows, ALongBatchIsRunAgainOnlyWhenAPartOfItThatHasWrittenFails)
{
    struct Situation {
        bool writes, fails, kept; // the part writes, it then fails, the batch goes on
        int runs;
        QString after;
    };
    const Situation situations[] = {
        {true, false, true, 1, u"inserted, part"_s},
        {false, true, true, 1, u"inserted"_s},
        {true, true, true, 2, u"inserted"_s},
        {true, true, false, 1, u""_s},
    };
    for (const Situation &i : situations) {
        int runs = 0;
        const auto batch = [&] {
            runBatch(s, [&] {
                ++runs;
                s.clientes->Execute("insert into Clientes (idc, ayn) values (8, 'inserted')");
                const auto part = [&] {
                    Lote inner(s);
                    if (i.writes)
                        s.clientes->Execute("insert into Clientes (idc, ayn) values (9, 'part')");
                    if (i.fails)
                        s.clientes->Execute("insert into Clientes (idc) values (70000)");
                    inner.commit();
                };
                if (i.kept)
                    attempt(s, part);
                else
                    part();
            });
        };
        EXPECT_EQ(numberOf(batch), i.kept ? 0 : ErrorNumber::Overflow);
        // A server always keeps parts apart, so nothing runs twice.
        EXPECT_EQ(runs, onServer() ? 1 : i.runs);
        EXPECT_FALSE(s.motor->inTransaction());
        EXPECT_EQ(allRows(*s.clientes, "select ayn from Clientes where idc > 4 order by idc")
                      .trimmed()
                      .replace(u"\n"_s, u", "_s),
                  i.after);
        s.clientes->Execute("delete * from Clientes where idc > 4");
    }
}

TEST_F(rows, AWalkForwardHoldsOneRow)
{
    Recordset walk =
        s.clientes->OpenForwardOnly("select idc, ayn from Clientes where idc > ? order by idc", 1);
    QString seen;
    for (; !walk.EOF_(); walk.MoveNext())
        seen += walk["ayn"].toText() + walk[0].toText();
    EXPECT_EQ(seen, u"C22C33C44"_s);
    walk.MoveNext();
    EXPECT_TRUE(walk.EOF_());
    EXPECT_EQ(numberOf([&] { walk["ayn"]; }), ErrorNumber::NoCurrentRecord);
    for (const auto &use : std::initializer_list<std::function<void()>>{
             [&] { walk.MoveFirst(); }, [&] { walk.RecordCount(); }, [&] { walk.Edit(); },
             [&] { walk.FindFirst("idc = 1"); }})
        EXPECT_NE(numberOf(use), 0);
    EXPECT_TRUE(s.clientes->OpenForwardOnly("select * from Clientes where idc > 9").EOF_());

    EXPECT_EQ(s.clientes->OpenSnapshot(RowLimit{4}, Sorted).RecordCount(), 4);
    EXPECT_EQ(numberOf([&] { s.clientes->OpenSnapshot(RowLimit{3}, Sorted); }), 7);
}

TEST_F(rows, TheFirstDoseOfAPatientIsFoundWithoutReadingThemAll)
{
    for (const int idm : {5, 7, 5})
        s.clientes->Execute("insert into ArtPlan (idm, ida) values (?, ?)", idm, idm * 10);
    s.clientes->Execute("update ArtPlan set ida = 51 where idm = 5");
    Recordset &list = s.lists.artplan;
    EXPECT_EQ(list.lookUp("idm = ?", 7, "ida"), std::optional<Value>(70));
    EXPECT_EQ(list.lookUp("idm = ?", 6, "ida"), std::nullopt);
    list.FindFirst("idm = ?", 5);
    EXPECT_EQ(list["ida"].toInt(), 51);
    list.MoveNext();
    EXPECT_EQ(list["idm"].toInt(), 7);
}

TEST_F(rows, TwoTerminalsTakeFromTheSameStockAndNothingIsLost)
{
    constexpr int products = 50, times = 1000;
    s.finanzas->Execute("delete * from Articulos");
    for (int i = 1; i <= products; ++i)
        s.finanzas->Execute("insert into Articulos (ida, nom, can) values (?, 'P', 100)", i);
    QProcess terminals[2];
    for (int i = 0; i < 2; ++i) {
        terminals[i].setProcessChannelMode(QProcess::ForwardedErrorChannel);
        terminals[i].start(QStringLiteral(STOCK_WRITER),
                           {folder.path(), QString::number(products), QString::number(times),
                            QString::number(i + 1)});
    }
    for (QProcess &t : terminals) {
        ASSERT_TRUE(t.waitForFinished(300'000));
        EXPECT_EQ(t.exitCode(), 0);
    }
    EXPECT_EQ(s.finanzas->read("select sum(can) from Articulos").toInt(),
              products * 100 - 2 * times);
}
