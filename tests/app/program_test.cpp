#include "running_program.h"

#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QThread>

namespace
{

void checkFiles(const QString &data)
{
    for (const QString &base : store::databases()) {
        const auto motor = store::createFileEngine(data);
        motor->open(base.toStdString());
        EXPECT_EQ(motor->check(base.toStdString()), "ok") << base.toStdString();
    }
}

} // namespace

TEST_F(Program, ANewFolderIsMadeOnceAndWaitsForItsFirstRun)
{
    const QStringList create{u"--crear"_s, data, u"--idioma"_s, u"en"_s};
    EXPECT_EQ(run(create).state, 0);
    for (const QString &base : store::databases())
        EXPECT_TRUE(QFile::exists(store::pathUnder(data, store::fileOf(base))))
            << base.toStdString();
    const Exit otherTime = run(create);
    EXPECT_EQ(otherTime.state, 1);
    EXPECT_TRUE(otherTime.errores.startsWith(u"This folder already holds"_s));

    const Exit dia = Day();
    EXPECT_EQ(dia.state, 1);
    EXPECT_TRUE(dia.errores.contains(u"The data folder is new"_s));
    EXPECT_EQ(run({u"--bogus"_s}).state, 2);
}

TEST_F(Program, AClinicIsSetUpWithItsFirstUserAndRunsItsDay)
{
    const QStringList create{u"--crear"_s,   data,         u"--idioma"_s,      u"en"_s,
                             u"--usuario"_s, u"Helen F"_s, u"--veterinaria"_s, u"Maple Grove"_s};
    const Exit done = run(create, binary(), "s3cret\nnot read\n");
    EXPECT_EQ(done.state, 0) << done.errores.toStdString();
    EXPECT_EQ(Day().state, 0) << "no first run is waited for";
    look([](Sesion &s) {
        const Recordset user = s.morvane->OpenSnapshot("select nom, up, ut from Usuarios");
        EXPECT_EQ(user[0].toText() + u'|' + user[1].toText() + u'|' + user[2].toText(),
                  u"Helen F|s3cret|2"_s);
        EXPECT_EQ(s.morvane->read("select nom from Veterinaria").toText(), u"Maple Grove"_s);
    });
}

TEST_F(Program, TheDayIsRunOnceAndTheBoardPrintedEachTime)
{
    Demo();
    const Exit first = Day();
    ASSERT_EQ(first.state, 0) << first.errores.toStdString();
    const QStringList lines = first.pizarra.split(u'\n', Qt::SkipEmptyParts);
    EXPECT_GE(lines.size(), 12);
    for (const QString &l : lines)
        EXPECT_EQ(l.count(u'\t'), 3) << l.toStdString();
    int tasks = 0;
    look([&](Sesion &s) {
        EXPECT_EQ(s.configuracion["FechaUltimoInicio"].toDate(), s.reloj.hoy);
        EXPECT_EQ(s.configuracion["FechaInicioAnterior"].toDate(), s.reloj.hoy.addDays(-3));
        tasks = s.morvane->read("select count(*) from TareasAgenda").toInt();
    });
    EXPECT_EQ(Day().pizarra, first.pizarra);
    look([&](Sesion &s) {
        EXPECT_EQ(s.morvane->read("select count(*) from TareasAgenda").toInt(), tasks);
        EXPECT_EQ(allRows(*s.morvane, "select * from errores"), QString());
    });
}

TEST_F(Program, TwoStartsAtOnceRunTheDayOnceAndShareNoNumber)
{
    Demo();
    const auto meal = [this] {
        Moneda c;
        look([&](Sesion &s) { c = s.clientes->read("select sum(can) from consumo").toMoneda(); });
        return c;
    };
    const Moneda before = meal();
    QProcess a, b;
    begin(a, dayArguments());
    begin(b, dayArguments());
    const Exit one = finish(a), other = finish(b);
    EXPECT_EQ(one.state, 0);
    EXPECT_EQ(other.state, 0);
    EXPECT_EQ(one.pizarra, other.pizarra);

    const Moneda broughtTwo = meal();
    look([&](Sesion &s) {
        EXPECT_EQ(
            allRows(*s.morvane, "select id from TareasAgenda group by id having count(*) > 1"),
            QString());
        EXPECT_EQ(s.configuracion["FechaInicioAnterior"].toDate(), s.reloj.hoy.addDays(-3));
    });
    Demo(); // a single run, for comparison
    EXPECT_EQ(Day().state, 0);
    EXPECT_EQ(broughtTwo, meal());
    EXPECT_LT(broughtTwo, before);
}

TEST_F(Program, KilledAtAnyMomentTheFilesAreWholeAndTheNextStartWorks)
{
    const auto all = [this] {
        QString t;
        look([&t](Sesion &s) {
            t = allRows(*s.morvane, "select * from TareasAgenda order by id")
                + allRows(*s.morvane, "select * from Pizarra")
                + allRows(*s.morvane, "select * from Perfiles order by idc")
                + allRows(*s.clientes, "select * from Consumo order by idm, IdCat")
                + allRows(*s.finanzas, "select * from CtaCteC order by idventa");
        });
        return t;
    };
    // How long an undisturbed run takes once the program is in the cache, and what it leaves.
    int lasts = 0;
    for (int i = 0; i < 2; ++i) {
        Demo();
        QElapsedTimer reloj;
        reloj.start();
        ASSERT_EQ(Day().state, 0);
        lasts = int(reloj.elapsed());
    }

    const QString whole = all();

    QRandomGenerator chance(20260311);
    int dead = 0;
    for (int i = 0; i < 30; ++i) {
        Demo();
        QProcess p;
        begin(p, dayArguments());
        QThread::msleep(ulong(chance.bounded(std::max(lasts, 1))));
        dead += kill(p);
        checkFiles(data);
        const Exit dia = Day();
        ASSERT_EQ(dia.state, 0) << i << ' ' << dia.errores.toStdString();
        EXPECT_EQ(all(), whole) << i; // the killed run left nothing, and nothing is done twice
    }
    EXPECT_GT(dead, 5); // else the test killed nothing
}

TEST_F(Program, FoldersThatCannotServeEndWithAMessageAndStatusOne)
{
    EXPECT_EQ(Day().state, 1);
    EXPECT_TRUE(Day().errores.startsWith(u"Can not open the database."_s));

    Demo();
    QFile broken(store::pathUnder(data, u"finanzas.mdb"_s));
    ASSERT_TRUE(broken.resize(broken.size() / 2 / 4096 * 4096));
    const Exit s = Day();
    EXPECT_EQ(s.state, 1);
    EXPECT_TRUE(s.errores.contains(u"finanzas.mdb"_s));
    EXPECT_TRUE(s.pizarra.isEmpty());
}

TEST_F(Program, ADiskThatTakesNoMoreEndsTheRunAndTheDayIsRunLater)
{
    Demo();
    const Exit full =
        run({u"-c"_s, u"trap '' XFSZ; ulimit -f 8; exec \"$0\" --datos \"$1\" --desatendido"_s,
             binary(), data},
            u"/bin/sh"_s);
    EXPECT_EQ(full.state, 1);
    EXPECT_FALSE(full.errores.isEmpty());
    checkFiles(data);
    EXPECT_EQ(Day().state, 0);
}

TEST_F(Program, RowsOfTheEnginesOwnToolAreUnderstood)
{
    Demo();
    QProcess sql;
    sql.start(u"sqlcipher"_s, {data + u"/clientes.mdb"_s});
    if (!sql.waitForStarted())
        GTEST_SKIP() << "the engine's tool is not installed";
    // Yes as 1, an amount as text, a name with an apostrophe: what another program may have
    // written.
    sql.write("PRAGMA key = 'korvi3namuspeltiraxo'; PRAGMA cipher_page_size = 4096;\n"
              "delete from Consumo; delete from ArtPlan;\n"
              "insert into Mascotas (idm, idc, nom, esp, pes, ser, dec) "
              "values (32000, 1, 'D''Artagnan \xC3\x91', 2, 4, 0, 0);\n"
              "insert into Consumo (idm, IdCat, ida, can, Con, men) "
              "values (32000, 1, 9, '10', '2.5', 0);\n"
              "insert into ArtPlan (idm, ida, dos, rep, si, IdCat) "
              "values (32000, 1, 1, date('now', 'localtime', '-1 day'), 0, 3);\n");
    sql.closeWriteChannel();
    ASSERT_TRUE(sql.waitForFinished());
    EXPECT_EQ(QString::fromUtf8(sql.readAllStandardError()), QString());

    const Exit dia = Day();
    ASSERT_EQ(dia.state, 0) << dia.errores.toStdString();
    EXPECT_TRUE(dia.pizarra.contains(u"103\t6\t18\tIt should have provided 1 "_s))
        << dia.pizarra.toStdString();
    look([&](Sesion &s) {
        EXPECT_EQ(allRows(*s.clientes, "select can from consumo"), u"2.5\n"_s); // three days of 2.5
    });
}

TEST_F(Program, TheDateComesFromTheSystem)
{
    if (const char *because = withoutClock())
        GTEST_SKIP() << because;
    Demo();
    ASSERT_EQ(Day().state, 0);
    const QDate tomorrow = QDate::currentDate().addDays(1);
    const Exit dia = dayOf(tomorrow);
    EXPECT_EQ(dia.state, 0) << dia.errores.toStdString();
    look([&](Sesion &s) { EXPECT_EQ(s.configuracion["FechaUltimoInicio"].toDate(), tomorrow); });
    // Back in the present the date is earlier than the last start; the question is answered with
    // No, so nothing is done.
    const Exit back = Day();
    EXPECT_EQ(back.state, 1);
    EXPECT_TRUE(back.errores.startsWith(u"The last start was "_s));
}
