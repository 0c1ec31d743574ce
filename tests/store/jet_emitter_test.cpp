// What statements of the dialect mean, shown by the rows that the engine gives for them.
#include "jet_engine.h"

#include <gtest/gtest.h>

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

class JetSemantics : public testing::Test
{
protected:
    void SetUp() override { e.Exec("INSERT INTO Uno VALUES (1, '2024-01-31')"); }

    /// The value of one expression.
    std::string Value(const std::string &expression, const Given &given = {})
    {
        std::string rows = e.Rows("select " + expression + " from Uno", given);
        if (!rows.empty())
            rows.pop_back();
        return rows;
    }

    void Clients()
    {
        e.Exec("INSERT INTO Clientes (idc, ayn, deuda, saldo, alta) VALUES"
               "(1, 'Ruiz Ana', -1, 10.5, '2024-03-01'),"
               "(2, 'álvarez', 0, 20, '2024-03-05'),"
               "(3, 'Alba', 0, 0.1, '2024-03-05 10:00:00'),"
               "(4, NULL, 0, NULL, NULL),"
               "(5, 'ÁLVAREZ', -1, 5, '2024-02-29')");
    }

    Engine e{Clinic};
};
} // namespace

TEST_F(JetSemantics, TextIsComparedWithoutLetterCaseButWithAccents)
{
    Clients();
    EXPECT_EQ(e.Rows("select idc from clientes where ayn = 'ÁLVAREZ' order by idc"), "2\n5\n");
    EXPECT_EQ(e.Rows("select idc from clientes where ayn = 'alvarez'"), "");
    EXPECT_EQ(e.Rows("select idc from clientes where ayn = ? order by idc", {"Álvarez"}), "2\n5\n");
    EXPECT_EQ(e.Rows("select idc from clientes where ayn in ('x', 'RUIZ ANA')"), "1\n");
    EXPECT_EQ(e.Rows("select idc from clientes where ayn not in ('RUIZ ANA', 'alba')"), "2\n5\n");
    EXPECT_EQ(e.Rows("select idc from clientes where ayn between 'ALVAREZ' and 'alba'"), "3\n");
    EXPECT_EQ(e.Rows("select idc from clientes where ayn < 'alc' order by ayn"), "3\n");
    EXPECT_EQ(e.Rows("select count(*) from (clientes inner join razas on clientes.ayn = "
                     "razas.nom)"),
              "0\n");
    e.Exec("INSERT INTO Razas VALUES (9, 'ALBA')");
    EXPECT_EQ(e.Rows("select idc, idr from clientes, razas where ayn = nom"), "3|9\n");
    EXPECT_EQ(e.Rows("select idc from clientes where ayn in (select nom from razas)"), "3\n");
    EXPECT_EQ(e.Rows("select count(*) from clientes group by ayn order by ayn"), "1\n1\n2\n1\n");
    EXPECT_EQ(e.Rows("select distinct lcase(ayn) from clientes where idc <> 4 order by 1"),
              "alba\nálvarez\nruiz ana\n");
    EXPECT_EQ(e.Rows("select min(ayn), max(ayn) from clientes where idc <> 5"), "Alba|Ruiz Ana\n");
    EXPECT_EQ(e.Rows("select idc from clientes order by ayn, idc desc"), "4\n3\n5\n2\n1\n");
}

TEST_F(JetSemantics, NamesAreFoundWithoutLetterCaseAndAnUnknownOneIsAnError)
{
    e.Exec("INSERT INTO Mascotas (idm, [preñez actual], dec, int, min) VALUES (7, 3, 0, -1, 2)");
    EXPECT_EQ(e.Rows("select [PREÑEZ ACTUAL], MASCOTAS.IDM, dec, int from MASCOTAS where DEC = 0 "
                     "and int = -1 and min > 1"),
              "3|7|0|-1\n");
    EXPECT_EQ(e.Rows("select m.idm from mascotas as m where M.idm = 7"), "7\n");
    EXPECT_EQ(e.Error("select nada from Mascotas"), 3061);
    EXPECT_EQ(e.Error("select [nada] from Mascotas"), 3061);
    EXPECT_EQ(e.Error("select \"idm\", x.idm from Mascotas"), 3061);
    EXPECT_EQ(e.Error("select mascotas.idm from mascotas as m"), 3061);
    EXPECT_EQ(e.Error("select * from nada"), 3078);
    EXPECT_EQ(e.Error("update nada set x = 1"), 3078);
    EXPECT_EQ(e.Error("insert into Mascotas (nada) values (1)"), 3061);
    EXPECT_EQ(e.Error("insert into Mascotas (idm) values (nada)"), 3061);
    EXPECT_EQ(e.Error("delete from mascotas where exists (select * from clientes as mascotas "
                      "where ayn = nom)"),
              3061); // the engine would look for the name in the inner table
}

TEST_F(JetSemantics, AnUnqualifiedNameOfSeveralTablesIsTakenOnlyWhenAJoinMakesThemEqual)
{
    e.Exec("INSERT INTO Mascotas (idm, idc, min) VALUES (7, 1, 5), (8, 1, 6)");
    e.Exec("INSERT INTO Consumo (idm, can, min) VALUES (7, 0.5, 9), (8, 0, 9)");
    EXPECT_EQ(e.Rows("select idm from consumo inner join mascotas on consumo.idm = mascotas.idm "
                     "where can > 0"),
              "7\n");
    EXPECT_EQ(e.Error("select min from consumo inner join mascotas on consumo.idm = mascotas.idm"),
              3061);
    EXPECT_EQ(e.Error("select idm from consumo, mascotas"), 3061);
    EXPECT_EQ(e.Rows("select mascotas.min from consumo, mascotas where consumo.idm = mascotas.idm "
                     "and can = 0"),
              "6\n");
}

TEST_F(JetSemantics, LikeTakesAnyTypeAndTheDialectsWildcards)
{
    Clients();
    EXPECT_EQ(e.Rows("select idc from clientes where ayn like 'ÁL*' order by idc"), "2\n5\n");
    EXPECT_EQ(e.Rows("select idc from clientes where ayn like ? order by idc", {"*Z*A*"}), "1\n");
    EXPECT_EQ(e.Rows("select idc from clientes where ayn not like 'a*' order by idc"),
              "1\n2\n5\n"); // Null is neither
    EXPECT_EQ(e.Rows("select idc from clientes where saldo like '20'"), "2\n");
    e.Exec("INSERT INTO Razas VALUES (8, 'r*'), (9, '*ba')"); // a pattern of each row
    EXPECT_EQ(e.Rows("select idr, idc from razas, clientes where ayn like razas.nom order by idr"),
              "8|1\n9|3\n");
    EXPECT_EQ(e.Rows("select idc from clientes where alta like '2024-02-*'"), "5\n");
    EXPECT_EQ(e.Rows("select idc from clientes where ayn like 'a_ba' or ayn like 'a%'"), "");
}

TEST_F(JetSemantics, DaysAndTimesReckonInTheFormThatIsStored)
{
    EXPECT_EQ(Value("#03/05/24#"), "2024-03-05");
    EXPECT_EQ(Value("#3/5/1930#"), "1930-03-05");
    EXPECT_EQ(Value("#01/01/29#"), "2029-01-01");
    EXPECT_EQ(Value("#01/01/30#"), "1930-01-01");
    EXPECT_EQ(Value("#2024-02-29#"), "2024-02-29");
    EXPECT_EQ(Value("#9:05#"), "09:05:00");
    EXPECT_EQ(Value("#03/05/24 09:05:10#"), "2024-03-05 09:05:10");
    EXPECT_EQ(Value("#03/05/24 00:00#"), "2024-03-05");
    for (const char *bad : {"#02/30/24#", "#02/29/23#", "#13/01/24#", "#24:00#", "#3/5/024#",
                            "#03/05/24", "##", "#x#"})
        EXPECT_EQ(e.Error(std::string("select ") + bad + " from Uno"), 3075) << bad;

    EXPECT_EQ(Value("date()"), "2024-03-05");
    EXPECT_EQ(Value("TIME()"), "09:30:00");
    EXPECT_EQ(Value("Now()"), "2024-03-05 09:30:00");
    EXPECT_EQ(Value("(DATE() - 5)"), "2024-02-29");
    EXPECT_EQ(Value("30 + date()"), "2024-04-04");
    EXPECT_EQ(Value("now() - 1"), "2024-03-04 09:30:00");
    EXPECT_EQ(Value("date() - dia"), "34");
    EXPECT_EQ(Value("month(date()), day(dia), year(dia)"), "3|31|2024");
    EXPECT_EQ(Value("month(null)"), "");
    EXPECT_EQ(Value("DateAdd('m', 1, dia)"), "2024-02-29");
    EXPECT_EQ(Value("DateAdd(\"yyyy\", -1, #02/29/24#)"), "2023-02-28");
    EXPECT_EQ(Value("DateAdd('ww', 2, dia)"), "2024-02-14");
    EXPECT_EQ(Value("DateAdd('n', 45, #09:30#)"), "10:15:00");
    EXPECT_EQ(Value("DateAdd('h', 20, #03/05/24 09:30#)"), "2024-03-06 05:30:00");
    EXPECT_EQ(Value("DateAdd('d', 999999999, dia)"), "");
    EXPECT_EQ(Value("DateDiff('d', dia, date()), DateDiff('m', dia, date())"), "34|2");
    EXPECT_EQ(Value("DateDiff('yyyy', #12/31/23#, #01/01/24#)"), "1");
    EXPECT_EQ(Value("DateDiff('ww', #03/02/24#, #03/03/24#)"), "1"); // Saturday to Sunday
    EXPECT_EQ(Value("DateDiff('ww', #03/03/24#, #03/09/24#)"), "0");
    EXPECT_EQ(Value("DateDiff('n', #08:59#, #10:00#), DateDiff('h', #08:59#, #10:00#)"), "61|2");
    EXPECT_EQ(e.Error("select dia + dia from Uno"), 3075);
    EXPECT_EQ(e.Error("select DateAdd('x', 1, dia) from Uno"), 3075);
    EXPECT_EQ(e.Error("select date() - #09:30# from Uno"), 3075);
}

TEST_F(JetSemantics, AValueComparedWithADayReckonsAsOne)
{
    Clients();
    EXPECT_EQ(e.Rows("select idc from clientes where alta < ? - 4 order by idc", {"2024-03-05"}),
              "5\n");
    EXPECT_EQ(e.Rows("select idc from clientes where alta between ? - ? and ? order by idc",
                     {"2024-03-05", "5", "2024-03-01"}),
              "1\n5\n");
    EXPECT_EQ(e.Rows("select idc from clientes where idc = ? - 3", {"5"}), "2\n");
    e.Rows("update clientes set nace = ? - 1 where idc = 1", {"2024-03-01"});
    EXPECT_EQ(e.Rows("select nace from clientes where idc = 1"), "2024-02-29\n");
}

TEST_F(JetSemantics, BetweenTakesItsBoundsInEitherOrder)
{
    Clients();
    const std::string days = "1\n2\n";
    EXPECT_EQ(e.Rows("select idc from clientes where alta between #03/05/24# and #03/01/24# "
                     "order by idc"),
              days);
    EXPECT_EQ(e.Rows("select idc from clientes where alta between ? and ? order by idc",
                     {"2024-03-05", "2024-03-01"}),
              days);
    EXPECT_EQ(e.Rows("select idc from clientes where saldo between 10 and 1"), "5\n");
    EXPECT_EQ(e.Rows("select idc from clientes where saldo not between 10 and 1 order by idc"),
              "1\n2\n3\n");
    EXPECT_EQ(e.Rows("select idc from clientes where saldo between null and 1"), "");
}

TEST_F(JetSemantics, AmountsAreExact)
{
    EXPECT_EQ(Value("0.3 - 3 * 0.1"), "0");
    EXPECT_EQ(Value("iif(0.1 + 0.2 = 0.3, 'x', 'y')"), "x");
    e.Exec("INSERT INTO Clientes (idc, saldo) VALUES (1, 0.3), (2, 0.1), (3, 0.1), (4, 0.1)");
    EXPECT_EQ(e.Rows("select sum(saldo) - 0.6, avg(saldo), sum(saldo * 3) from clientes"),
              "0|0.14999999999999999|1.8\n");
    EXPECT_EQ(e.Rows("select saldo - 0.1 - 0.1 - 0.1 from clientes where idc = 1"), "0\n");
    EXPECT_EQ(e.Rows("select saldo * 0.00015 from clientes where idc = 2"), "0\n");

    // Half to even, however the value comes in.
    e.Rows("update clientes set saldo = 0.00025 where idc = 1");
    e.Rows("update clientes set saldo = ? where idc = 2", {"0.00035"});
    e.Rows("insert into clientes (idc, saldo) values (9, 7 / 3)");
    e.Rows("insert into clientes (idc, saldo) select 10, pes from mascotas");
    EXPECT_EQ(e.Rows("select saldo from clientes where idc in (1, 2, 9) order by idc"),
              "0.00020000000000000001\n0.00040000000000000002\n2.3332999999999999\n");
    EXPECT_EQ(e.Rows("select 1 from clientes where idc = 9 and saldo = 2.3333"), "1\n");
    EXPECT_THROW(e.Rows("update clientes set saldo = 'mucho'"), std::runtime_error);
    EXPECT_EQ(e.Sql("update clientes set saldo = saldo - 1, idc = 2 where idc = 1"),
              "UPDATE \"main\".\"Clientes\" SET \"saldo\" = jet_moneda(\"Clientes\".\"saldo\" - 1)"
              ", \"idc\" = 2 WHERE \"Clientes\".\"idc\" = 1");
}

TEST_F(JetSemantics, Numbers)
{
    EXPECT_EQ(Value("7 / 2, 7 \\ 2, 7 mod 4, -7 \\ 2"), "3.5|3|3|-3");
    EXPECT_EQ(Value("2 + 3 * 4 - -1, (2 + 3) * 4, 10 - 3 - 2, 12 \\ 5 * 2"), "15|20|5|1");
    EXPECT_EQ(Value("int(-2.5), int(2.9), abs(-3), round(2.5), round(3.5), round(2.345, 2)"),
              "-3|2|3|2|4|2.3399999999999999");
    EXPECT_EQ(Value("val('12.5 kg'), val(' 3 4x'), val('x')"), "12.5|34|0");
    EXPECT_EQ(Value("1 / 0"), "");
    EXPECT_EQ(e.Error("select 1e999 from Uno"), 3075);
    EXPECT_EQ(e.Error("select 2 ^ 3 from Uno"), 3075);
    // A whole column takes the rounded number.
    e.Rows("insert into clientes (idc) values (2.5)");
    e.Rows("insert into clientes (idc) values (7 / 2)");
    EXPECT_EQ(e.Rows("select idc from clientes"), "2\n4\n");
}

TEST_F(JetSemantics, YesAndNoAreMinusOneAndZero)
{
    Clients();
    EXPECT_EQ(Value("true, false, yes, no, not true, not false, 1 = 1, 1 = 2, null = 1"),
              "-1|0|-1|0|0|-1|-1|0|");
    EXPECT_EQ(Value("(1 = 1) = true, (1 = 1) + 1, iif(not 1 = 2, 'x', 'y')"), "-1|0|x");
    EXPECT_EQ(e.Rows("select idc, deuda and saldo > 6, ayn like 'r*' from clientes where deuda "
                     "order by idc"),
              "1|-1|-1\n5|0|0\n");
    EXPECT_EQ(e.Rows("select idc from clientes where not deuda order by idc"), "2\n3\n4\n");
    // Whatever is written, the column holds -1 or 0.
    e.Rows("update clientes set deuda = idc > 2");
    EXPECT_EQ(e.Rows("select deuda from clientes order by idc"), "0\n0\n-1\n-1\n-1\n");
    e.Rows("update clientes set deuda = 1");
    EXPECT_EQ(e.Rows("select distinct deuda from clientes"), "-1\n");
    e.Rows("update clientes set deuda = ?", {"1"});
    EXPECT_EQ(e.Rows("select distinct deuda from clientes"), "-1\n");
    e.Rows("update clientes set deuda = null where idc = 1");
    e.Rows("insert into clientes (idc, deuda) select idm, idm from mascotas");
    EXPECT_EQ(e.Rows("select deuda from clientes where idc = 1"), "0\n");
}

TEST_F(JetSemantics, TextFunctions)
{
    EXPECT_EQ(Value("'a' & null & 1 & 2.50 & #09:30# & true"), "a12.509:30:00-1");
    EXPECT_EQ(Value("'a' + 'b', 'a' + null, 1 + 2 & 'x'"), "ab||3x");
    EXPECT_EQ(Value("('a' + ?) & 'b'", {"x"}), "axb");
    EXPECT_EQ(Value("ucase('ñandú'), lcase('ÁRBOL'), len('ñandú'), len(12.0)"), "ÑANDÚ|árbol|5|2");
    EXPECT_EQ(Value("left('ñandú', 2), right('ñandú', 2), mid('ñandú', 2, 3), mid('ñandú', 4)"),
              "ña|dú|and|dú");
    EXPECT_EQ(Value("left('ab', 9), right('ab', 9), right('ab', 0), left('ab', 0), mid('ab', 3)"),
              "ab|ab|||");
    EXPECT_EQ(Value("trim('  a b '), cstr(2.5), cstr(7 / 7)"), "a b|2.5|1");
    EXPECT_EQ(Value("'it''s', \"a \"\"b\"\"\""), "it's|a \"b\"");
    EXPECT_EQ(Value("nz(null), nz(null, 5), nz('a', 'b'), iif(null, 1, 2)"), "|5|a|2");
    EXPECT_EQ(e.Error("select format(1, '0') from Uno"), 3075);
    EXPECT_EQ(e.Error("select len('a', 'b') from Uno"), 3075);
}

TEST_F(JetSemantics, AMemoKeepsATextThatLooksLikeANumber)
{
    e.Rows("insert into clientes (idc, obs) values (1, ?)", {"'0341"});
    e.Rows("insert into clientes (idc, obs) values (2, ' 12 ')");
    e.Rows("insert into clientes (idc, obs) values (3, '1e5')");
    e.Rows("insert into clientes (idc, obs) values (4, 'Paga')");
    e.Rows("insert into clientes (idc, obs) select 5, tel & '007' from clientes where idc = 1");
    EXPECT_EQ(e.Rows("select obs from clientes order by idc"),
              "x'0341'\nx' 12 '\nx'1e5'\nPaga\nx'007'\n");
    e.Rows("update clientes set obs = 15.0, tel = obs where idc = 4");
    e.Rows("update clientes set tel = obs where idc = 1");
    EXPECT_EQ(e.Rows("select obs, tel from clientes where idc in (1, 4) order by idc"),
              "x'0341'|0341\nx'15'|Paga\n");
    EXPECT_EQ(e.Rows("select idc, obs & '!', len(obs) from clientes where obs = '0341' or obs "
                     "like '1E*' order by idc"),
              "1|0341!|4\n3|1e5!|3\n");
    EXPECT_EQ(e.Rows("select idc from clientes where obs in ('007', '0341') order by obs desc"),
              "1\n5\n");
    EXPECT_EQ(e.Rows("select idc from clientes where obs is null or obs = ''"), "");
}

TEST_F(JetSemantics, AnAliasServesLaterInTheFieldListAndInTheOrder)
{
    Clients();
    EXPECT_EQ(
        e.Rows("select idc, (select sum(n) from uno where n = idc) as pagos, saldo - pagos "
               "as resto, resto * 2 as doble from clientes where idc < 3 order by resto desc"),
        "1|1|9.5|19\n2|||\n");
    EXPECT_EQ(e.Rows("select saldo as idc from clientes where idc < 3 order by idc"), "10.5\n20\n");
    EXPECT_EQ(e.Error("select resto + 1, saldo as resto from clientes"), 3061);
    EXPECT_EQ(e.Error("select saldo as resto from clientes where resto > 1"), 3061);
}

TEST_F(JetSemantics, ANumberInTheOrderIsAPositionOnlyWhenItStandsAlone)
{
    Clients();
    EXPECT_EQ(e.Rows("select ayn, idc from clientes where idc < 4 order by 2 desc"),
              "Alba|3\nálvarez|2\nRuiz Ana|1\n");
    EXPECT_EQ(e.Error("select ayn from clientes order by 2"), 3075);
    // What the engine itself would reduce to a number is no position either.
    for (const char *constant : {"-7", "5 - 8", "(no) and deuda"})
        EXPECT_EQ(
            e.Rows(std::string("select idc from clientes where idc = 1 order by ") + constant),
            "1\n")
            << constant;
    EXPECT_EQ(e.Rows("select idc, 9 as k from clientes where idc = 1 order by k"), "1|9\n");
    EXPECT_EQ(e.Error("select idc from clientes where exists (select n from uno order by ayn)"),
              3075); // the engine does not see the outer query there
}

TEST_F(JetSemantics, JoinsSubqueriesAndUnions)
{
    Clients();
    e.Exec("INSERT INTO Mascotas (idm, idc, nom) VALUES (7, 1, 'Luna'), (8, 1, 'Toby'), "
           "(9, 2, 'luna'), (10, 99, 'Sola')");
    e.Exec("INSERT INTO Consumo (idm, can) VALUES (7, 1), (9, 2)");
    EXPECT_EQ(e.Rows("select ayn, nom, can from ((clientes left join mascotas on clientes.idc = "
                     "mascotas.idc) left join consumo on mascotas.idm = consumo.idm) where "
                     "clientes.idc < 4 order by ayn, nom"),
              "Alba||\nálvarez|luna|2\nRuiz Ana|Luna|1\nRuiz Ana|Toby|\n");
    EXPECT_EQ(e.Rows("select idm, ayn from clientes right join mascotas on clientes.idc = "
                     "mascotas.idc where idm > 8 order by idm"),
              "9|álvarez\n10|\n");
    EXPECT_EQ(e.Rows("select ayn, can from clientes inner join (mascotas inner join consumo on "
                     "mascotas.idm = consumo.idm) on clientes.idc = mascotas.idc order by can"),
              "Ruiz Ana|1\nálvarez|2\n");
    EXPECT_EQ(e.Error("select * from clientes left join (mascotas inner join consumo on "
                      "mascotas.idm = consumo.idm) on clientes.idc = mascotas.idc"),
              3075);
    EXPECT_EQ(e.Error("select * from clientes, clientes"), 3075);
    EXPECT_EQ(e.Rows("select idc from clientes where exists (select * from mascotas where "
                     "mascotas.idc = clientes.idc) and idc in (select idc from mascotas where nom "
                     "like 'lu*') order by idc"),
              "1\n2\n");
    EXPECT_EQ(e.Rows("select idc from clientes where not exists (select * from mascotas where "
                     "mascotas.idc = clientes.idc) order by idc"),
              "3\n4\n5\n");
    EXPECT_EQ(jet::Plegar(e.Rows("select nom from mascotas union select 'LUNA' from uno order by "
                                 "nom desc")),
              "toby\nsola\nluna\n");
    EXPECT_EQ(e.Rows("select idm from mascotas union all select n from uno order by 1"),
              "1\n7\n8\n9\n10\n");
    EXPECT_EQ(e.Error("select idm, nom from mascotas union select n from uno"), 3075);
    EXPECT_EQ(e.Error("select (select idm, nom from mascotas) from uno"), 3075);
}

TEST_F(JetSemantics, Totals)
{
    Clients();
    EXPECT_EQ(e.Rows("select count ('dia') as [c], count(*), count(saldo) from clientes"),
              "5|5|4\n");
    EXPECT_EQ(e.Rows("select top 2 deuda, sum(saldo) as t from clientes group by deuda having "
                     "sum(saldo) > 1 order by t desc"),
              "0|20.100000000000001\n-1|15.5\n");
    EXPECT_EQ(e.Rows("select sum(saldo) from clientes where idc = 77"), "\n");
    EXPECT_EQ(e.Rows("select top 0 idc from clientes"), "");
    for (const char *bad :
         {"select idc, count(*) from clientes", "select idc from clientes where count(*) > 1",
          "select sum(count(*)) from clientes", "select idc from clientes order by count(*)",
          "select * from clientes group by idc", "select count(*) as c, sum(c) from clientes",
          "select idc from clientes where (select sum(clientes.idc) from uno) > 1",
          "select max(idc, 2) from clientes"})
        EXPECT_NE(e.Error(bad), 0) << bad;
}

TEST_F(JetSemantics, ChangesNameTheirTableAndCountTheirValues)
{
    Clients();
    const jet::Traduccion t =
        jet::Traducir("delete clientes.* from CLIENTES where idc = 1", e.Catalog(), "main");
    EXPECT_EQ(t.clase, jet::Traduccion::Cambio);
    EXPECT_EQ(t.tablaEscrita, "Clientes");
    e.Rows("delete * from clientes where idc = 1");
    e.Rows("delete from clientes where idc = (select max(idc) from clientes)");
    e.Rows("update clientes set clientes.saldo = saldo + 1, ayn = ayn & '!' where idc = 2;");
    e.Rows("insert into turnos (dia, hor) values (Date(), Time())");
    EXPECT_EQ(e.Rows("select idc, ayn, saldo from clientes where idc < 4 order by idc"),
              "2|álvarez!|21\n3|Alba|0.10000000000000001\n");
    EXPECT_EQ(e.Rows("select id, dia, hor from turnos"), "1|2024-03-05|09:30:00\n");
    for (const char *bad :
         {"insert into clientes (idc, ayn) values (1)",
          "insert into clientes (idc, ayn) select idc from clientes",
          "insert into clientes (idc, IDC) values (1, 2)", "insert into clientes values (1)",
          "update clientes set idc = 1, idc = 2",
          "update clientes inner join mascotas on clientes.idc = mascotas.idc "
          "set ayn = ''",
          "delete mascotas.* from clientes"})
        EXPECT_EQ(e.Error(bad), 3075) << bad;
}

TEST_F(JetSemantics, ColumnsOfTheResultAreNamedAndTyped)
{
    const auto described = [this](const std::string &sql) {
        std::string out;
        for (const jet::ColumnaDeSalida &c : jet::Traducir(sql, e.Catalog(), "main").columnas)
            out += c.tabla + "." + c.columna + " " + c.nombre + " " + std::to_string(int(c.tipo))
                   + " " + std::to_string(c.ancho) + "\n";
        return out;
    };
    const auto type = [](Tipo t) { return std::to_string(int(t)); };
    EXPECT_EQ(described("select c.*, RAZAS.nom, Razas.NOM as raza from razas, uno as c"),
              "c.n n " + type(Tipo::Long) + " 0\nc.dia dia " + type(Tipo::Date)
                  + " 0\nRazas.nom nom " + type(Tipo::Text) + " 20\nRazas.nom raza "
                  + type(Tipo::Text) + " 20\n");
    const std::vector<std::pair<std::string, Tipo>> cases{
        {"count(*)", Tipo::Long},
        {"sum(saldo)", Tipo::Currency},
        {"max(alta)", Tipo::Date},
        {"sum(idc)", Tipo::Long},
        {"avg(idc)", Tipo::Double},
        {"date() - 3", Tipo::Date},
        {"date() - alta", Tipo::Long},
        {"time()", Tipo::Time},
        {"deuda = 0", Tipo::YesNo},
        {"not deuda", Tipo::YesNo},
        {"ayn & idc", Tipo::Text},
        {"idc + 1", Tipo::Long},
        {"idc * 0.5", Tipo::Double},
        {"saldo * idc", Tipo::Currency},
        {"saldo / 2", Tipo::Double},
        {"0.1 + 0.2", Tipo::Currency},
        {"iif(deuda, saldo, 0)", Tipo::Currency},
        {"nz(saldo)", Tipo::Currency},
        {"iif(deuda, alta, null)", Tipo::Date},
        {"(select max(dia) from uno)", Tipo::Date},
        {"(saldo)", Tipo::Currency},
        {"?", Tipo::Ninguno},
    };
    for (const auto &[expression, tipo] : cases) {
        const auto t =
            jet::Traducir("select " + expression + " from clientes", e.Catalog(), "main");
        EXPECT_EQ(t.columnas.at(0).tipo, tipo) << expression;
    }
}

TEST_F(JetSemantics, KeysOfAllTablesStandBehindTheColumnsWhenAskedFor)
{
    e.Exec("INSERT INTO Clientes (rowid, idc, ayn) VALUES (41, 1, 'Ana'), (42, 2, 'Eva')");
    e.Exec("INSERT INTO Mascotas (rowid, idm, idc) VALUES (51, 7, 1)");
    const std::string sql = "select idm, c.ayn from clientes as c left join mascotas on c.idc = "
                            "mascotas.idc order by ayn";
    EXPECT_EQ(e.Rows(sql, {}, true), "7|Ana|41|51\n|Eva|42|\n");
    const jet::Traduccion t = jet::Traducir(sql, e.Catalog(), "main", true);
    ASSERT_EQ(t.fuentes.size(), 2u);
    EXPECT_EQ(t.columnas.size(), 2u);
    EXPECT_EQ(t.fuentes[1].tabla + t.fuentes[1].alias, "MascotasMascotas");
    EXPECT_EQ(t.fuentes[0].alias, "c");
    EXPECT_EQ(t.fuentes[1].columnaDeClave, 3);
    for (const char *none : {"select distinct idc from clientes", "select sum(idc) from clientes",
                             "select idc from clientes union select idm from mascotas"})
        EXPECT_TRUE(jet::Traducir(none, e.Catalog(), "main", true).fuentes.empty()) << none;
}

TEST_F(JetSemantics, ParametersComeFromTheCallerAndTheClock)
{
    const jet::Traduccion t = jet::Traducir(
        "select ?, date(), ? from uno where dia between date() and now()", e.Catalog(), "main");
    std::string origins;
    for (const jet::Parametro &p : t.parametros)
        origins += std::to_string(p.origen) + std::to_string(p.indice) + " ";
    EXPECT_EQ(origins, "00 01 10 30 ");
    EXPECT_EQ(t.valoresDados, 2);
    EXPECT_EQ(Value("? & '-' & ? & date()", {"a", "b"}), "a-b2024-03-05");
}

TEST_F(JetSemantics, Definitions)
{
    const auto defined = [this](const std::string &sql) {
        const jet::Traduccion t = jet::Traducir(sql, e.Catalog(), "main");
        std::string out = std::to_string(t.definicion.clase) + " " + t.definicion.tabla;
        for (const jet::Columna &c : t.definicion.columnas)
            out +=
                " " + c.nombre + ":" + std::to_string(int(c.tipo)) + ":" + std::to_string(c.ancho);
        return out;
    };
    const auto n = [](Tipo t) { return std::to_string(int(t)) + ":"; };
    EXPECT_EQ(
        defined("CREATE TABLE Nueva (ID Text, Texto LongText, [un dia] DateTime, n TEXT (100), "
                "i INTEGER, s short, c COUNTER)"),
        "0 Nueva ID:" + n(Tipo::Text) + "255 Texto:" + n(Tipo::Memo) + "0 un dia:" + n(Tipo::Date)
            + "0 n:" + n(Tipo::Text) + "100 i:" + n(Tipo::Long) + "0 s:" + n(Tipo::Smallint)
            + "0 c:" + n(Tipo::Counter) + "0");
    EXPECT_EQ(defined("alter table Nada add x yesno"), "1 Nada x:" + n(Tipo::YesNo) + "0");
    EXPECT_EQ(defined("ALTER TABLE Ventas ALTER COLUMN hora TEXT(25)"),
              "2 Ventas hora:" + n(Tipo::Text) + "25");
    EXPECT_EQ(defined("alter table Ventas drop column hora"),
              "3 Ventas hora:" + n(Tipo::Ninguno) + "0");
    EXPECT_EQ(defined("drop table Ventas;"), "4 Ventas");
    for (const char *bad :
         {"create table x (a text(0))", "create table x (a text(256))", "create table x ()",
          "create table x (a blob)", "create table x (a long not null)",
          "create index i on uno (n)", "alter table x rename to y", "drop index i"})
        EXPECT_EQ(e.Error(bad), 3075) << bad;
}

TEST_F(JetSemantics, WhatIsNotUnderstoodIsRefusedAndShown)
{
    try {
        jet::Traducir("select n\nfrom uno\nwhere  n == 1", e.Catalog(), "main");
        ADD_FAILURE() << "taken";
    } catch (const ErrorDeAlmacen &error) {
        EXPECT_EQ(error.numero, 3075);
        EXPECT_EQ(error.descripcion.toStdString(),
                  "An expression expected, line 3, column 11:\nwhere  n == 1\n          ^");
    }
    try { // the caret counts letters, and a long line is cut around it
        const std::string year = "año";
        std::string sql = "select '";
        for (int i = 0; i < 40; ++i)
            sql += year;
        jet::Traducir(sql + "', ñu from uno", e.Catalog(), "main");
        ADD_FAILURE() << "taken";
    } catch (const ErrorDeAlmacen &error) {
        EXPECT_EQ(error.numero, 3061);
        const QString line = error.descripcion.section(u'\n', 1, 1);
        const QString caret = error.descripcion.section(u'\n', 2, 2);
        EXPECT_EQ(line.mid(caret.size() - 1), QStringLiteral("ñu from uno"));
    }
    for (const std::string &bad : {std::string(),
                                   std::string(";"),
                                   std::string("select"),
                                   std::string("select n from"),
                                   std::string("select n from uno where"),
                                   std::string("select n from uno; drop table uno"),
                                   std::string("select n from uno -- x"),
                                   std::string("select n /* x */ from uno"),
                                   std::string("select n from uno where n = 'x"),
                                   std::string("select [n from uno"),
                                   std::string("select `n` from uno"),
                                   std::string("select n into otra from uno"),
                                   std::string("select top 10 percent n from uno"),
                                   std::string("select n from (select n from uno)"),
                                   std::string("pragma key = 'x'"),
                                   std::string("attach 'x' as y"),
                                   std::string("select n from main.uno"),
                                   std::string("select n from uno limit 1"),
                                   std::string("select n from uno where n glob 1"),
                                   std::string("select randomblob(9) from uno"),
                                   std::string("select load_extension('x')"),
                                   std::string("select n || n from uno"),
                                   std::string("select n from uno group by 1"),
                                   std::string("select 12abc from uno"),
                                   std::string("select n\0 from uno", 19),
                                   std::string("begin"),
                                   std::string("select n from uno where n = @x")})
        EXPECT_EQ(e.Error(bad), 3075) << bad;
    EXPECT_NO_THROW(jet::Revisar("select nada from ninguna where x = 1"));
    EXPECT_THROW(jet::Revisar("select nada ninguna"), ErrorDeAlmacen);
}

TEST_F(JetSemantics, SizeAndDepthAreLimited)
{
    const auto repeated = [](const std::string &s, int n) {
        std::string out;
        for (int i = 0; i < n; ++i)
            out += s;
        return out;
    };
    EXPECT_EQ(Value(repeated("(", 10) + "n" + repeated(")", 10)), "1");
    EXPECT_EQ(Value("n" + repeated(" + n", 200)), "201");
    EXPECT_EQ(Value("iif(" + repeated("n = 1 and ", 200) + "true, 'x', 'y')"), "x");
    EXPECT_EQ(Value(repeated("- ", 20) + "n"), "1");
    EXPECT_EQ(Value("n & " + repeated("n & ", 90) + "n").size(), 92u);
    EXPECT_EQ(Value("0.1" + repeated(" + 0.1", 99)), "10");
    for (const std::string &bad :
         {repeated("(", 5000) + "n" + repeated(")", 5000), "n" + repeated(" + n", 15000),
          repeated("not ", 10000) + "n", repeated("- ", 10000) + "n",
          repeated("abs(", 30) + "n" + repeated(")", 30), "n in (" + repeated("1,", 30000) + "1)",
          "'" + repeated("x", 70000) + "'",
          repeated("(select ", 100) + "n" + repeated(" from uno)", 100)})
        EXPECT_EQ(e.Error("select " + bad + " from uno"), 3075) << bad.substr(0, 60);
    // Every alias doubles the one before.
    std::string fields = "n & n as a0";
    for (int i = 1; i < 60; ++i)
        fields += ", a" + std::to_string(i - 1) + " & a" + std::to_string(i - 1) + " as a"
                  + std::to_string(i);
    EXPECT_EQ(e.Error("select " + fields + " from uno"), 3075);
}

TEST_F(JetSemantics, TheIndexStaysInUse)
{
    e.Exec("CREATE INDEX tdia ON Turnos (dia); CREATE INDEX tidc ON Turnos (idc);"
           "CREATE INDEX thor ON Turnos (hor); CREATE INDEX mnom ON Mascotas (idc)");
    for (const char *where :
         {"dia = ?", "dia between ? and ?", "dia < date() - 180", "dia >= dateadd('m', -1, date())",
          "idc = 7", "hor between #09:30# and #09:44#", "dia between date() - 2 and date()",
          "dia in (#03/05/24#, ?)", "idc in (select idm from mascotas)"})
        EXPECT_NE(e.Plan(std::string("select * from turnos where ") + where).find("SEARCH"),
                  std::string::npos)
            << where << "\n"
            << e.Plan(std::string("select * from turnos where ") + where);
    EXPECT_NE(e.Plan("select * from clientes left join mascotas on clientes.idc = mascotas.idc")
                  .find("USING INDEX mnom"),
              std::string::npos);
    EXPECT_NE(
        e.Plan("delete * from turnos where dia < (date() - 180) and idc >= 41").find("USING INDEX"),
        std::string::npos);
}
