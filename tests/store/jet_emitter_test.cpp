// What statements of the dialect mean, shown by the rows that the engine returns.
#include "jet_engine.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <optional>

using namespace store;
using namespace jet_test;

namespace
{
constexpr auto Clinic = R"(
table Uno
    n LONG
    dia DATE
table Clientes
    idc SMALLINT
    ayn TEXT(50)
    tel TEXT(20)
    obs MEMO
    deuda YESNO
    saldo CURRENCY
    alta DATE
    nace DATE
table Mascotas
    idm SMALLINT
    idc SMALLINT
    nom TEXT(50)
    pes DOUBLE
    int YESNO
    dec YESNO
    [preñez actual] SMALLINT
    min CURRENCY
table Razas
    idr SMALLINT
    nom TEXT(20)
table Consumo
    idm SMALLINT
    can DOUBLE
    min CURRENCY
table Turnos
    id COUNTER
    dia DATE
    hor TIME
    idc LONG
    des TEXT(20)
)";

constexpr auto Clients = R"(INSERT INTO Clientes (idc, ayn, deuda, saldo, alta) VALUES
    (1, 'Ruiz Ana', -1, 10.5, '2024-03-01'),
    (2, 'álvarez', 0, 20, '2024-03-05'),
    (3, 'Alba', 0, 0.1, '2024-03-05 10:00:00'),
    (4, NULL, 0, NULL, NULL),
    (5, 'ÁLVAREZ', -1, 5, '2024-02-29'))";

class JetSemantics : public testing::Test
{
protected:
    void SetUp() override
    {
        e.emplace(Clinic);
        e->exec("INSERT INTO Uno VALUES (1, '2024-01-31')");
    }

    /// Runs one line of corpus/semantics.sql, which explains the notation.
    void check(const std::string &line)
    {
        if (line == "@clients")
            return e->exec(Clients);
        if (line.starts_with('@'))
            return e->exec(line.substr(1));
        if (line.starts_with('!')) {
            EXPECT_EQ(e->error(line.substr(line.find(' ') + 1)), std::stoi(line.substr(1))) << line;
            return;
        }
        const size_t arrow = line.find(" ->");
        const std::string run = line.substr(0, arrow), sql = run.substr(0, run.find(" <- "));
        Given given;
        if (sql != run) {
            std::istringstream values(run.substr(sql.size() + 4));
            for (std::string v; std::getline(values >> std::ws, v, ',');)
                given.push_back(v);
        }
        const std::string rows = result(sql, given);
        if (arrow != line.npos) {
            EXPECT_EQ(rows, arrow + 4 < line.size() ? line.substr(arrow + 4) : "") << line;
        }
    }

    std::string result(const std::string &sql, const Given &given)
    {
        if (sql.starts_with("= "))
            return joined(e->rows("select " + sql.substr(2) + " from Uno", given), "");
        if (sql.starts_with("? "))
            return joined(
                e->rows("select idc from clientes where " + sql.substr(2) + " order by idc", given),
                " ");
        return joined(e->rows(sql, given), " / ");
    }

    /// The rows joined into one line.
    static std::string joined(const std::string &rows, const std::string &separator)
    {
        std::string line;
        std::istringstream each(rows);
        for (std::string row; std::getline(each, row);)
            line += (line.empty() ? "" : separator) + row;
        return line;
    }

    jet::Translation translated(const std::string &sql, bool keys = false)
    {
        return sqlcipher::translate(sql, e->catalog(), "main", keys);
    }

    std::optional<Engine> e;
};

std::string repeated(const char *text, int times)
{
    return QByteArray(text).repeated(times).toStdString();
}
} // namespace

TEST_F(JetSemantics, StatementsGiveTheRowsThatTheCorpusTells)
{
    std::ifstream lines(std::filesystem::path(__FILE__).parent_path() / "corpus/semantics.sql");
    std::string rule;
    int checked = 0;
    for (std::string line; std::getline(lines, line);) {
        if (line.empty() || line.starts_with('#'))
            continue;
        if (line.starts_with('[')) {
            rule = line;
            SetUp();
            continue;
        }
        SCOPED_TRACE(rule);
        ++checked;
        EXPECT_NO_THROW(check(line)) << line;
    }
    EXPECT_GT(checked, 200) << "or the corpus was not read";
}

TEST_F(JetSemantics, AnAmountIsRoundedInTheStatementAndItsTableNamed)
{
    const jet::Translation t =
        translated("update clientes set saldo = saldo - 1, idc = 2 where idc = 1");
    EXPECT_EQ(t.sql,
              "UPDATE \"main\".\"Clientes\" SET \"saldo\" = jet_moneda(\"Clientes\".\"saldo\" - 1)"
              ", \"idc\" = 2 WHERE \"Clientes\".\"idc\" = 1");
    EXPECT_THROW(e->rows("insert into clientes (saldo) values ('mucho')"), std::runtime_error);
    const jet::Translation d = translated("delete clientes.* from CLIENTES where idc = 1");
    EXPECT_EQ(d.kind, jet::Translation::Change);
    EXPECT_EQ(d.writtenTable, "Clientes");
}

TEST_F(JetSemantics, AUnionHoldsATextOnceWhateverItsCase)
{
    e->exec("INSERT INTO Mascotas (nom) VALUES ('Luna'), ('Toby'), ('luna'), ('sola')");
    EXPECT_EQ(jet::fold(e->rows("select nom from mascotas union select 'LUNA' from uno order by "
                                "nom desc")),
              "toby\nsola\nluna\n"); // folded: either spelling of a duplicate is right
}

TEST_F(JetSemantics, ColumnsOfTheResultAreNamedAndTyped)
{
    const auto described = [this](const std::string &sql) {
        std::string out;
        for (const jet::OutputColumn &c : translated(sql).columns)
            out += c.table + "." + c.column + " " + c.name + " " + std::to_string(int(c.type)) + " "
                   + std::to_string(c.width) + "\n";
        return out;
    };
    const auto type = [](ColumnType t) { return std::to_string(int(t)); };
    EXPECT_EQ(described("select c.*, RAZAS.nom, Razas.NOM as raza from razas, uno as c"),
              "c.n n " + type(ColumnType::Long) + " 0\nc.dia dia " + type(ColumnType::Date)
                  + " 0\nRazas.nom nom " + type(ColumnType::Text) + " 20\nRazas.nom raza "
                  + type(ColumnType::Text) + " 20\n");
    const std::pair<ColumnType, std::vector<std::string>> cases[] = {
        {ColumnType::Long, {"count(*)", "sum(idc)", "date() - alta", "idc + 1"}},
        {ColumnType::Currency,
         {"sum(saldo)", "saldo * idc", "0.1 + 0.2", "iif(deuda, saldo, 0)", "nz(saldo)",
          "(saldo)"}},
        {ColumnType::Double, {"avg(idc)", "idc * 0.5", "saldo / 2"}},
        {ColumnType::Date,
         {"max(alta)", "date() - 3", "iif(deuda, alta, null)", "(select max(dia) from uno)"}},
        {ColumnType::Time, {"time()"}},
        {ColumnType::YesNo, {"deuda = 0", "not deuda"}},
        {ColumnType::Text, {"ayn & idc"}},
        {ColumnType::None, {"?"}}};
    for (const auto &[expected, expressions] : cases)
        for (const std::string &x : expressions)
            EXPECT_EQ(translated("select " + x + " from clientes").columns.at(0).type, expected)
                << x;
}

TEST_F(JetSemantics, KeysOfAllTablesStandBehindTheColumnsWhenAskedFor)
{
    e->exec("INSERT INTO Clientes (rowid, idc, ayn) VALUES (41, 1, 'Ana'), (42, 2, 'Eva')");
    e->exec("INSERT INTO Mascotas (rowid, idm, idc) VALUES (51, 7, 1)");
    const std::string sql = "select idm, c.ayn from clientes as c left join mascotas on c.idc = "
                            "mascotas.idc order by ayn";
    EXPECT_EQ(e->rows(sql, {}, true), "7|Ana|41|51\n|Eva|42|\n");
    const jet::Translation t = translated(sql, true);
    ASSERT_EQ(t.fuentes.size(), 2u);
    EXPECT_EQ(t.columns.size(), 2u);
    EXPECT_EQ(t.fuentes[1].table + t.fuentes[1].alias, "MascotasMascotas");
    EXPECT_EQ(t.fuentes[0].alias, "c");
    EXPECT_EQ(t.fuentes[1].keyColumn, 3);
    for (const char *none : {"select distinct idc from clientes", "select sum(idc) from clientes",
                             "select idc from clientes union select idm from mascotas"})
        EXPECT_TRUE(translated(none, true).fuentes.empty()) << none;
}

TEST_F(JetSemantics, ParametersComeFromTheCallerAndTheClock)
{
    const jet::Translation t =
        translated("select ?, date(), ? from uno where dia between date() and now()");
    std::string origins;
    for (const jet::Parameter &p : t.parameters)
        origins += std::to_string(p.origin) + std::to_string(p.index) + " ";
    EXPECT_EQ(origins, "00 01 10 30 ");
    EXPECT_EQ(t.valueCount, 2);
    EXPECT_EQ(e->rows("select ? & '-' & ? & date() from uno", {"a", "b"}), "a-b2024-03-05\n");
}

TEST_F(JetSemantics, definitions)
{
    const auto defined = [this](const std::string &sql) {
        const jet::Translation t = translated(sql);
        std::string out = std::to_string(t.definition.kind) + " " + t.definition.table;
        for (const jet::Column &c : t.definition.columns)
            out += " " + c.name + ":" + std::to_string(int(c.type)) + ":" + std::to_string(c.width);
        return out;
    };
    const auto n = [](ColumnType t) { return std::to_string(int(t)) + ":"; };
    EXPECT_EQ(
        defined("CREATE TABLE Nueva (ID Text, Texto LongText, [un dia] DateTime, n TEXT (100), "
                "i INTEGER, s short, c COUNTER)"),
        "0 Nueva ID:" + n(ColumnType::Text) + "255 Texto:" + n(ColumnType::Memo) + "0 un dia:"
            + n(ColumnType::Date) + "0 n:" + n(ColumnType::Text) + "100 i:" + n(ColumnType::Long)
            + "0 s:" + n(ColumnType::Smallint) + "0 c:" + n(ColumnType::Counter) + "0");
    EXPECT_EQ(defined("alter table Nada add x yesno"), "1 Nada x:" + n(ColumnType::YesNo) + "0");
    EXPECT_EQ(defined("ALTER TABLE Ventas ALTER COLUMN hora TEXT(25)"),
              "2 Ventas hora:" + n(ColumnType::Text) + "25");
    EXPECT_EQ(defined("alter table Ventas drop column hora"),
              "3 Ventas hora:" + n(ColumnType::None) + "0");
    EXPECT_EQ(defined("drop table Ventas;"), "4 Ventas");
}

TEST_F(JetSemantics, WhatIsNotUnderstoodIsShown)
{
    try {
        translated("select n\nfrom uno\nwhere  n == 1");
        ADD_FAILURE() << "taken";
    } catch (const StoreError &error) {
        EXPECT_EQ(error.number, 3075);
        EXPECT_EQ(error.description.toStdString(),
                  "An expression expected, line 3, column 11:\nwhere  n == 1\n          ^");
    }
    try { // the caret counts letters, and a long line is cut around it
        translated("select '" + repeated("año", 40) + "', ñu from uno");
        ADD_FAILURE() << "taken";
    } catch (const StoreError &error) {
        EXPECT_EQ(error.number, 3061);
        const QString line = error.description.section(u'\n', 1, 1);
        const QString caret = error.description.section(u'\n', 2, 2);
        EXPECT_EQ(line.mid(caret.size() - 1), QStringLiteral("ñu from uno"));
    }
    EXPECT_EQ(e->error(""), 3075);
    EXPECT_EQ(e->error(std::string("select n\0 from uno", 19)), 3075);
}

TEST_F(JetSemantics, SizeAndDepthAreLimited)
{
    const auto value = [this](const std::string &x) {
        return e->rows("select " + x + " from uno");
    };
    EXPECT_EQ(value(repeated("(", 10) + "n" + repeated(")", 10)), "1\n");
    EXPECT_EQ(value("n" + repeated(" + n", 200)), "201\n");
    EXPECT_EQ(value("iif(" + repeated("n = 1 and ", 200) + "true, 'x', 'y')"), "x\n");
    EXPECT_EQ(value(repeated("- ", 20) + "n"), "1\n");
    EXPECT_EQ(value("n & " + repeated("n & ", 90) + "n").size(), 93u);
    EXPECT_EQ(value("0.1" + repeated(" + 0.1", 99)), "10\n");
    for (const std::string &bad :
         {repeated("(", 5000) + "n" + repeated(")", 5000), "n" + repeated(" + n", 15000),
          repeated("not ", 10000) + "n", repeated("- ", 10000) + "n",
          repeated("abs(", 30) + "n" + repeated(")", 30), "n in (" + repeated("1,", 30000) + "1)",
          "'" + repeated("x", 70000) + "'",
          repeated("(select ", 100) + "n" + repeated(" from uno)", 100)})
        EXPECT_EQ(e->error("select " + bad + " from uno"), 3075) << bad.substr(0, 60);
    // Every alias is twice as long as the one before.
    QString fields = QStringLiteral("n & n as a0");
    for (int i = 1; i < 60; ++i)
        fields += QStringLiteral(", a%1 & a%1 as a%2").arg(i - 1).arg(i);
    EXPECT_EQ(e->error("select " + fields.toStdString() + " from uno"), 3075);
}

TEST_F(JetSemantics, TheIndexStaysInUse)
{
    e->exec("CREATE INDEX tdia ON Turnos (dia); CREATE INDEX tidc ON Turnos (idc);"
            "CREATE INDEX thor ON Turnos (hor); CREATE INDEX mnom ON Mascotas (idc)");
    for (const char *where :
         {"dia = ?", "dia between ? and ?", "dia < date() - 180", "dia >= dateadd('m', -1, date())",
          "idc = 7", "hor between #09:30# and #09:44#", "dia between date() - 2 and date()",
          "dia in (#03/05/24#, ?)", "idc in (select idm from mascotas)"}) {
        const std::string plan = e->Plan(std::string("select * from turnos where ") + where);
        EXPECT_NE(plan.find("SEARCH"), plan.npos) << where << "\n" << plan;
    }
    for (const char *sql :
         {"select * from clientes left join mascotas on clientes.idc = mascotas.idc",
          "delete * from turnos where dia < (date() - 180) and idc >= 41"})
        EXPECT_NE(e->Plan(sql).find("USING INDEX"), std::string::npos) << sql;
}
