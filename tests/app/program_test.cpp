#include "running_program.h"

#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QThread>

namespace
{

void ComprobarArchivos(const QString &datos)
{
    for (const QString &base : BasesDeDatos()) {
        const auto motor = CrearMotorDeArchivos();
        motor->Abrir(RutaBajo(datos, ArchivoDe(base)), "b");
        const auto st = motor->Preparar("PRAGMA integrity_check");
        ASSERT_TRUE(st->Paso());
        EXPECT_EQ(st->Texto(0), "ok") << base.toStdString();
    }
}

} // namespace

TEST_F(Programa, ANewFolderIsMadeOnceAndWaitsForItsFirstRun)
{
    const QStringList crear{u"--crear"_s, datos, u"--idioma"_s, u"en"_s};
    EXPECT_EQ(Correr(crear).estado, 0);
    for (const QString &base : BasesDeDatos())
        EXPECT_TRUE(QFile::exists(RutaBajo(datos, ArchivoDe(base)))) << base.toStdString();
    const Salida otraVez = Correr(crear);
    EXPECT_EQ(otraVez.estado, 1);
    EXPECT_TRUE(otraVez.errores.startsWith(u"This folder already holds"_s));

    const Salida dia = Dia();
    EXPECT_EQ(dia.estado, 1);
    EXPECT_TRUE(dia.errores.contains(u"The data folder is new"_s));
    EXPECT_EQ(Correr({u"--bogus"_s}).estado, 2);
}

TEST_F(Programa, TheDayIsRunOnceAndTheBoardPrintedEachTime)
{
    Demo();
    const Salida primero = Dia();
    ASSERT_EQ(primero.estado, 0) << primero.errores.toStdString();
    const QStringList lineas = primero.pizarra.split(u'\n', Qt::SkipEmptyParts);
    EXPECT_GE(lineas.size(), 12);
    for (const QString &l : lineas)
        EXPECT_EQ(l.count(u'\t'), 3) << l.toStdString();
    int tareas = 0;
    Mirar([&](Sesion &s) {
        EXPECT_EQ(s.configuracion["FechaUltimoInicio"].toDate(), s.reloj.hoy);
        EXPECT_EQ(s.configuracion["FechaInicioAnterior"].toDate(), s.reloj.hoy.addDays(-3));
        tareas = s.morvane->Leer("select count(*) from TareasAgenda").toInt();
    });
    EXPECT_EQ(Dia().pizarra, primero.pizarra);
    Mirar([&](Sesion &s) {
        EXPECT_EQ(s.morvane->Leer("select count(*) from TareasAgenda").toInt(), tareas);
        EXPECT_EQ(Filas(*s.morvane, "select * from errores"), QString());
    });
}

TEST_F(Programa, TwoStartsAtOnceRunTheDayOnceAndShareNoNumber)
{
    Demo();
    const auto comida = [this] {
        Moneda c;
        Mirar([&](Sesion &s) { c = s.clientes->Leer("select sum(can) from consumo").toMoneda(); });
        return c;
    };
    const Moneda antes = comida();
    QProcess a, b;
    Empezar(a, ArgumentosDelDia());
    Empezar(b, ArgumentosDelDia());
    const Salida una = Terminar(a), otra = Terminar(b);
    EXPECT_EQ(una.estado, 0);
    EXPECT_EQ(otra.estado, 0);
    EXPECT_EQ(una.pizarra, otra.pizarra);

    const Moneda traDos = comida();
    Mirar([&](Sesion &s) {
        EXPECT_EQ(Filas(*s.morvane, "select id from TareasAgenda group by id having count(*) > 1"),
                  QString());
        EXPECT_EQ(s.configuracion["FechaInicioAnterior"].toDate(), s.reloj.hoy.addDays(-3));
    });
    Demo(); // one run alone, for comparison
    EXPECT_EQ(Dia().estado, 0);
    EXPECT_EQ(traDos, comida());
    EXPECT_LT(traDos, antes);
}

TEST_F(Programa, KilledAtAnyMomentTheFilesAreWholeAndTheNextStartWorks)
{
    const auto todo = [this] {
        QString t;
        Mirar([&t](Sesion &s) {
            t = Filas(*s.morvane, "select * from TareasAgenda order by id")
                + Filas(*s.morvane, "select * from Pizarra")
                + Filas(*s.morvane, "select * from Perfiles order by idc")
                + Filas(*s.clientes, "select * from Consumo order by idm, IdCat")
                + Filas(*s.finanzas, "select * from CtaCteC order by idventa");
        });
        return t;
    };
    // How long an undisturbed run takes, the second time it is loaded, and what it leaves.
    int dura = 0;
    for (int i = 0; i < 2; ++i) {
        Demo();
        QElapsedTimer reloj;
        reloj.start();
        ASSERT_EQ(Dia().estado, 0);
        dura = int(reloj.elapsed());
    }

    const QString entero = todo();

    QRandomGenerator azar(20260311);
    int muertos = 0;
    for (int i = 0; i < 30; ++i) {
        Demo();
        QProcess p;
        Empezar(p, ArgumentosDelDia());
        QThread::msleep(ulong(azar.bounded(std::max(dura, 1))));
        muertos += Matar(p);
        ComprobarArchivos(datos);
        const Salida dia = Dia();
        ASSERT_EQ(dia.estado, 0) << i << ' ' << dia.errores.toStdString();
        EXPECT_EQ(todo(), entero) << i; // the cut run has left nothing, and nothing is done twice
    }
    EXPECT_GT(muertos, 5); // or the test has killed nothing
}

TEST_F(Programa, FoldersThatCannotServeEndWithAMessageAndStatusOne)
{
    EXPECT_EQ(Dia().estado, 1);
    EXPECT_TRUE(Dia().errores.startsWith(u"Can not open the database."_s));

    Demo();
    QFile roto(RutaBajo(datos, u"finanzas.mdb"_s));
    ASSERT_TRUE(roto.resize(roto.size() / 2 / 4096 * 4096));
    const Salida s = Dia();
    EXPECT_EQ(s.estado, 1);
    EXPECT_TRUE(s.errores.contains(u"finanzas.mdb"_s));
    EXPECT_TRUE(s.pizarra.isEmpty());
}

TEST_F(Programa, ADiskThatTakesNoMoreEndsTheRunAndTheDayIsRunLater)
{
    Demo();
    const Salida lleno =
        Correr({u"-c"_s, u"trap '' XFSZ; ulimit -f 8; exec \"$0\" --datos \"$1\" --desatendido"_s,
                Binario(), datos},
               u"/bin/sh"_s);
    EXPECT_EQ(lleno.estado, 1);
    EXPECT_FALSE(lleno.errores.isEmpty());
    ComprobarArchivos(datos);
    EXPECT_EQ(Dia().estado, 0);
}

TEST_F(Programa, RowsOfTheEnginesOwnToolAreUnderstood)
{
    Demo();
    QProcess sql;
    sql.start(u"sqlcipher"_s, {datos + u"/clientes.mdb"_s});
    if (!sql.waitForStarted())
        GTEST_SKIP() << "the engine's tool is not installed";
    // Yes as 1, an amount as text, a name with an apostrophe: what another program may write.
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

    const Salida dia = Dia();
    ASSERT_EQ(dia.estado, 0) << dia.errores.toStdString();
    EXPECT_TRUE(dia.pizarra.contains(u"103\t6\t18\tIt should have provided 1 "_s))
        << dia.pizarra.toStdString();
    Mirar([&](Sesion &s) {
        EXPECT_EQ(Filas(*s.clientes, "select can from consumo"), u"2.5\n"_s); // three days of 2.5
    });
}

TEST_F(Programa, TheDateComesFromTheSystem)
{
    if (const char *porque = SinReloj())
        GTEST_SKIP() << porque;
    Demo();
    ASSERT_EQ(Dia().estado, 0);
    const QDate manana = QDate::currentDate().addDays(1);
    const Salida dia = DiaDel(manana);
    EXPECT_EQ(dia.estado, 0) << dia.errores.toStdString();
    Mirar([&](Sesion &s) { EXPECT_EQ(s.configuracion["FechaUltimoInicio"].toDate(), manana); });
    // Back in the present the date is earlier: nobody says Yes, so nothing is done.
    const Salida atras = Dia();
    EXPECT_EQ(atras.estado, 1);
    EXPECT_TRUE(atras.errores.startsWith(u"The last start was "_s));
}
