#include "store/errors.h"
#include "store/jet/criterion.h"

#include <gtest/gtest.h>

using namespace store;
using namespace jet;

namespace
{
const std::vector<OutputColumn> Columns{
    {"idc", "Clientes", "idc", ColumnType::Smallint, 0},
    {"nom", "Clientes", "nom", ColumnType::Text, 50},
    {"ven", "Clientes", "ven", ColumnType::Date, 0},
    {"saldo", "Clientes", "saldo", ColumnType::Currency, 0},
    {"deuda", "Clientes", "deuda", ColumnType::YesNo, 0},
    {"nom", "Razas", "nom", ColumnType::Text, 50},
    {"preñez actual", "Razas", "preñez actual", ColumnType::Smallint, 0}};

std::vector<Value> row()
{
    return {57, QStringLiteral("Centro Álvarez"), QDate(2024, 3, 20), Moneda::round(0.3), true, {},
            2};
}

bool meets(std::string_view text, std::vector<Value> given = {},
           const std::vector<Value> &row = row())
{
    return Criterion::compile(text, Columns)
        ->meets([&](int i) { return row.at(size_t(i)); }, given, QDate(2024, 3, 5));
}

int error(std::string_view text)
{
    try {
        Criterion::compile(text, Columns);
    } catch (const StoreError &e) {
        return e.number;
    }
    return 0;
}
} // namespace

TEST(JetCriterion, ComparesAsStatementsDo)
{
    for (const char *met : {"idc = 57",
                            "clientes.IDC = 57",
                            "idc = 57.0",
                            "idc between 60 and 50",
                            "idc in (1, 57)",
                            "nom = 'CENTRO ÁLVAREZ'",
                            "nom like 'cen*'",
                            "nom like '*ÁLV?rez'",
                            "nom not like 'x*'",
                            "nom < 'd'",
                            "ven = #03/20/24#",
                            "ven <= date() + 30",
                            "idc = 57 and (ven <= date() + 30)",
                            "date() - ven = -15",
                            "ven in (#3/20/2024#)",
                            "saldo - 0.1 - 0.1 = 0.1",
                            "deuda",
                            "deuda = -1",
                            "deuda = true",
                            "not deuda = 0",
                            "razas.nom is null",
                            "nom is not null",
                            "[PREÑEZ ACTUAL] = 2",
                            "nom & razas.nom & 1 = 'centro álvarez1'",
                            "idc mod 10 = 7 and idc \\ 10 = 5 and 7 / 2 = 3.5",
                            "-idc = -57"})
        EXPECT_TRUE(meets(met)) << met;
    EXPECT_TRUE(meets("saldo - -1e300 > 0 and -1e300 - saldo < 0")) << "beyond an amount";
    for (const char *unmet :
         {"idc = 58", "nom = 'Centro Alvarez'", "nom like 'cen'", "ven > date() + 30", "not deuda",
          "ven < '2024-03-20'", "idc = 'x'", "nom < 5", "1 / 0 = 1", "1 \\ 0 = 1"})
        EXPECT_FALSE(meets(unmet)) << unmet;
}

TEST(JetCriterion, NullIsNeitherMetNorItsOpposite)
{
    for (const char *unmet :
         {"razas.nom = 'x'", "not razas.nom = 'x'", "razas.nom <> 'x'", "razas.nom like '*'",
          "razas.nom not like 'x'", "razas.nom in ('x')", "razas.nom not in ('x')",
          "idc not in (1, null)", "razas.nom between 'a' and 'z'", "not (idc = 57 and null)"})
        EXPECT_FALSE(meets(unmet)) << unmet;
    EXPECT_TRUE(meets("idc = 57 or razas.nom = 'x'"));
    EXPECT_TRUE(meets("not (idc = 58 and razas.nom = 'x')"));
    EXPECT_TRUE(meets("idc in (null, 57)"));
}

TEST(JetCriterion, TakesValues)
{
    EXPECT_TRUE(meets("idc = ? and nom like ?", {57, QStringLiteral("*álvarez")}));
    EXPECT_TRUE(meets("ven = ?", {QDate(2024, 3, 20)}));
    EXPECT_TRUE(meets("ven < ?", {QDateTime(QDate(2024, 3, 20), QTime(9, 0))}));
    EXPECT_TRUE(meets("ven <= ? + 15", {QDate(2024, 3, 5)}));
    const auto prepared = [](const Value &given) {
        std::vector<Value> room;
        return Criterion::compile("ven = ?", Columns)->prepare(std::span(&given, 1), room)[0];
    };
    EXPECT_EQ(prepared(QStringLiteral("2024-03-20")), Value(QDate(2024, 3, 20)));
    EXPECT_THROW(prepared(45371), StoreError);
    // Words that another program wrote into a column of dates match nothing.
    std::vector<Value> spoilt = row();
    spoilt[2] = QStringLiteral("soon");
    EXPECT_FALSE(meets("ven < #1/1/24#", {}, spoilt));
    EXPECT_FALSE(meets("not ven < #1/1/24#", {}, spoilt));
    EXPECT_FALSE(meets("idc = ?", {Value()}));
    EXPECT_FALSE(meets("idc = ?")); // a missing value counts as Null
}

TEST(JetCriterion, AnEqualityOffersItsColumnForAHash)
{
    const std::vector<Value> given{7};
    const auto equality = [&](const char *text) {
        return Criterion::compile(text, Columns)->asEquality(given);
    };
    EXPECT_EQ(equality("idc = 57")->column, 0);
    EXPECT_EQ(equality("idc = 57")->value, Value(57));
    EXPECT_EQ(equality("idc = -32000")->value, Value(-32000));
    EXPECT_EQ(equality("razas.nom = 'x'")->column, 5);
    EXPECT_EQ(equality("(idc = ?)")->value, Value(7));
    for (const char *none : {"idc <> 57", "57 = idc", "idc = 57 and deuda", "nom like 'x'",
                             "idc = idc", "idc = 1 + 1", "not idc = 57"})
        EXPECT_FALSE(equality(none)) << none;
}

TEST(JetCriterion, RefusesWhatItDoesNotCompute)
{
    EXPECT_EQ(error("ven < 5"), 3421);
    EXPECT_EQ(error("ven in (#1/1/24#, 'x')"), 3421);
    EXPECT_EQ(error("nada = 1"), 3061);
    EXPECT_EQ(error("otra.idc = 1"), 3061);
    for (const char *bad : {"", "idc =", "idc = 57; 1", "idc = 57 order by idc", "count(*) = 1",
                            "idc in (select idc from x)", "exists (select 1)", "ucase(nom) = 'X'"})
        EXPECT_EQ(error(bad), 3075) << bad;
}
