#include "support/clinic.h"

#include "store/schema.h"

using namespace store;
using namespace Qt::StringLiterals;

namespace
{

QString faultOf(const char *text)
{
    try {
        parseSchema(QString::fromUtf8(text), u"x.txt"_s);
    } catch (const std::runtime_error &e) {
        return QString::fromUtf8(e.what());
    }
    return u"accepted"_s;
}

struct Schema : Clinic {
    Base &databaseOf(const QString &name)
    {
        if (name == u"morvane")
            return *s.morvane;
        if (name == u"clientes")
            return *s.clientes;
        if (name == u"os")
            return *s.os;
        return name == u"finanzas" ? *s.finanzas : *s.rep97;
    }
};

} // namespace

TEST(Declaration, RefusesWhatItDoesNotUnderstandAndSaysWhere)
{
    EXPECT_EQ(faultOf("# only\n b LONG"), u"x.txt:2: a column or index before the first table");
    EXPECT_EQ(faultOf("table a\n b INTEGER"), u"x.txt:2: no type: INTEGER");
    EXPECT_EQ(faultOf("table a\n b TEXT"), u"x.txt:2: no type: TEXT");
    EXPECT_EQ(faultOf("table a\n b LONG\n B BYTE"), u"x.txt:3: column B twice");
    EXPECT_EQ(faultOf("table a\n b LONG\n\ntable A"), u"x.txt:4: table A twice");
    EXPECT_EQ(faultOf("table a\n b LONG default x"),
              u"x.txt:2: no number and no text in quotes: x");
    EXPECT_EQ(faultOf("table a\n b TEXT(5) default 'x"), u"x.txt:2: cannot read \"'x\"");
    EXPECT_EQ(faultOf("table a\n b YESNO"),
              u"x.txt:2: Yes/No column b without a default: it would hold Null");
    EXPECT_EQ(faultOf("table a\n b LONG\n index c"), u"x.txt:3: index on c, which is no column");
    EXPECT_EQ(faultOf("table a\n b LONG\n c LONG\n index b c where 1"),
              u"x.txt:4: expected: index COLUMN where VALUE");
    EXPECT_EQ(faultOf("table a\n b LONG\n index b\n c LONG"),
              u"x.txt:4: a column behind the indexes");
}

TEST(Declaration, ReadsNamesWithBlanksAndLiteralsWithHashes)
{
    const auto t = parseSchema(u"table [a b] # comment\n"
                               "  [c d] TEXT(7) default '# no ''comment''' # comment\n"
                               "  e YESNO default 0\n"
                               "  index unique [c d] e\n"
                               "  index E where -1\n"_s,
                               u"x.txt"_s);
    ASSERT_EQ(t.size(), 1u);
    EXPECT_EQ(t[0].name, u"a b");
    EXPECT_EQ(t[0].columns[0].name, "c d");
    EXPECT_EQ(t[0].columns[0].width, 7);
    EXPECT_EQ(t[0].columns[0].byDefault, Value(u"# no 'comment'"_s));
    ASSERT_EQ(t[0].indices.size(), 2u);
    EXPECT_TRUE(t[0].indices[0].unique);
    EXPECT_EQ(t[0].indices[0].columns, (QStringList{u"c d"_s, u"e"_s}));
    EXPECT_EQ(t[0].indices[1].columns, QStringList{u"e"_s});
    EXPECT_EQ(t[0].indices[1].onlyWhere, Value(-1));
}

TEST_F(Schema, OfTheFilesIsTheDeclaredOne)
{
    for (const QString &name : databases()) {
        Base &base = databaseOf(name);
        const auto declared = readSchema(name);
        EXPECT_EQ(s.motor->tables(base.Schema()).size(), declared.size());
        for (const DeclaredTable &t : declared) {
            const std::string table = t.name.toStdString();
            SCOPED_TRACE(table);
            const TableDescription there = s.motor->describe(base.Schema(), table);
            EXPECT_TRUE(there.keyed);
            ASSERT_EQ(there.columns.size(), t.columns.size());
            for (size_t i = 0; i < t.columns.size(); ++i) {
                const jet::NewColumn &c = there.columns[i];
                EXPECT_EQ(c.name, t.columns[i].name);
                EXPECT_EQ(c.type, t.columns[i].type) << c.name;
                EXPECT_EQ(c.width, t.columns[i].width) << c.name;
                EXPECT_EQ(c.byDefault, t.columns[i].byDefault) << c.name;
            }
            EXPECT_EQ(there.indexes.size(), t.indices.size());
        }
    }
}

TEST_F(Schema, GivesNewRowsWhatLaterStatementsCountUpOrCompare)
{
    s.morvane->Execute("insert into Perfiles (idc) values (7)");
    s.morvane->Execute("update Perfiles set TurnosNoCumplidos = TurnosNoCumplidos + 1");
    EXPECT_EQ(allRows(*s.morvane, "select * from Perfiles"), u"7|0|0|0|0|0|1\n");
    s.finanzas->Execute("insert into CtaCteC (idVenta, idc) values (1, 7)");
    EXPECT_EQ(allRows(*s.finanzas, "select idVenta from CtaCteC where Cancelado = 0 and men = 0"),
              u"1\n");
    s.clientes->Execute("insert into Mascotas (idm) values (1)");
    EXPECT_EQ(allRows(*s.clientes,
                      "select idm from Mascotas where [dec] = 0 and [int] = 0 and ser = "
                      "0 and tarea = 0 and hos = 0"),
              u"1\n");
}

TEST_F(Schema, TakesNoIdentifierTwiceWhereRowsAreFoundByIt)
{
    s.clientes->Execute("insert into Clientes (idc) values (1)");
    try {
        s.clientes->Execute("insert into Clientes (idc) values (1)");
        ADD_FAILURE() << "a second client 1";
    } catch (const StoreError &e) {
        EXPECT_EQ(e.number, ErrorNumber::Key);
    }
    // The marker row in the agenda borrows the number of the next task.
    s.morvane->Execute("insert into TareasAgenda (Ida, ID) values (-32000, 5)");
    s.morvane->Execute("insert into TareasAgenda (Ida, ID) values (9, 5)");
}

TEST_F(Schema, LeavesRowsInTheOrderOfEntryWhereNothingElseIsAsked)
{
    // The order of the numbers is the reverse of every other order.
    for (const int n : {1, 2, 3}) {
        const QString name = QString(QChar(u'd' - n)) + u"sur"_s;
        s.morvane->Execute("insert into TareasAgenda (id, tip, ida, dia, hor, fcreacion)"
                           " values (?, ?, 4, ?, ?, ?)",
                           n, 9 - n, hoy, QTime(12 - n, 0), hoy);
        s.finanzas->Execute("insert into Ventas (idventa, fec, tip) values (?, ?, ?)", n, hoy,
                            5 - n);
        s.clientes->Execute("insert into Mascotas (idm, idc, nom) values (?, 1, ?)", n, name);
        s.finanzas->Execute("insert into CtaCteC (idVenta, idc, Cancelado) values (?, 1, ?)", n,
                            n != 3);
        s.finanzas->Execute("insert into Articulos (ida, idcat, nom) values (?, 99, ?)", 500 + n,
                            name);
        s.clientes->Execute("insert into CLLocalidad (id, nom, ran) values (?, ?, 0)", n, name);
    }
    const std::pair<Base *, const char *> queries[] = {
        {s.morvane.get(), "select id from TareasAgenda where dia = #03/11/26#"},
        {s.morvane.get(), "select id from TareasAgenda where fcreacion = #03/11/26#"},
        {s.finanzas.get(), "select idventa from Ventas where fec = #03/11/26#"},
        {s.clientes.get(), "select idm from Mascotas where idc = 1"},
        {s.finanzas.get(), "select idVenta from CtaCteC where idc = 1"},
        {s.finanzas.get(), "select ida - 500 from Articulos where idcat = 99"},
        {s.clientes.get(), "select id from CLLocalidad where nom like '*sur' order by ran"}};
    for (const auto &[base, sql] : queries)
        EXPECT_EQ(allRows(*base, sql), u"1\n2\n3\n") << sql;
}
