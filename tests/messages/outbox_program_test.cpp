// The outbox of the program as cron starts it: a real process, a real mail server, real kills.

#include "agenda/tasks.h"
#include "messages/mail_account.h"
#include "store/schema.h"
#include "store/settings_row.h"
#include "support/clinic.h"
#include "support/smtp_server.h"

#include <QDir>
#include <QFile>
#include <QHash>
#include <QStandardPaths>
#include <QThread>

#include <csignal>

using namespace Qt::StringLiterals;

namespace
{

class Program : public testing::Test
{
protected:
    QTemporaryDir folder;
    const QString data = folder.path() + u"/data"_s;
    const QString home = folder.path() + u"/home"_s;

    Program() { QDir().mkpath(home); }

    void prepare(QProcess &p) const
    {
        QProcessEnvironment e = QProcessEnvironment::systemEnvironment();
        e.insert(u"KELVARA_HOME"_s, home);
        p.setProcessEnvironment(e);
    }
    static QString binary() { return QString::fromLatin1(KELVARA_PROGRAM); }
    QStringList dayArguments() const
    {
        return {u"--datos"_s, data, u"--idioma"_s, u"en"_s, u"--desatendido"_s};
    }

    /// @return the exit status, -1 when it could not be run
    int run(const QString &program, const QStringList &arguments) const
    {
        QProcess p;
        prepare(p);
        p.start(program, arguments);
        p.waitForFinished(120000);
        return p.exitStatus() == QProcess::NormalExit && p.error() != QProcess::FailedToStart
                   ? p.exitCode()
                   : -1;
    }
    int runDay() const { return run(binary(), dayArguments()); }
    int runDayAt(QDate day) const
    {
        return run(u"faketime"_s, QStringList{day.toString(Qt::ISODate) + u" 06:00:00"_s, binary()}
                                      + dayArguments());
    }

    void makeDemo()
    {
        ASSERT_EQ(run(binary(), {u"--crear"_s, data, u"--demo"_s, u"--idioma"_s, u"en"_s}), 0);
    }

    // Opens the folder beside the program, as another terminal.
    template <typename F>
    void look(F &&f)
    {
        DialogosDesatendidos dialogs;
        SinImpresion printer;
        Sesion s(dialogs, printer, Idioma::Ingles);
        FijarCarpetaDeDatos(s, data);
        s.carpetaDePrograma = home + u'/';
        const auto failure = AbrirAlmacen(s);
        ASSERT_FALSE(failure) << failure->texto.toStdString();
        f(s);
    }

    void connectTo(const ServidorDeCorreo &server)
    {
        look([&](Sesion &s) {
            GuardarCuentaDeCorreo(s, {u"vet@clinic.example"_s, u"llave"_s, u"localhost"_s,
                                      server.Puerto(), Cifrado::Ninguno});
        });
    }

    // Forty clients that are written to today, beside what the day itself finds.
    void addClientsToWriteTo()
    {
        look([](Sesion &s) {
            Lote batch(s);
            for (int i = 0; i < 40; ++i) {
                s.clientes->Execute("insert into clientes (idc, ayn, email) values (?, 'C', ?)",
                                    20000 + i, u"c%1@x.example"_s.arg(i));
                Tarea t;
                t.tip = TipoTarea::Frecuente;
                t.ida = 20000 + i;
                t.medio = 1;
                t.fcreacion = s.reloj.hoy;
                AgregarTarea(s, t);
            }
            batch.Confirmar();
        });
    }

    // How often each of the forty got a mail.
    static QHash<QString, int> arrivals(const ServidorDeCorreo &server)
    {
        QHash<QString, int> counts;
        for (const CorreoRecibido &c : server.Recibidos())
            if (c.para.value(0).endsWith(u"@x.example"_s))
                ++counts[c.para[0]];
        return counts;
    }

    static void waitForMails(const ServidorDeCorreo &server, qsizetype howMany)
    {
        for (int i = 0; i < 600 && server.Recibidos().size() < howMany; ++i)
            QThread::msleep(50);
    }
};

// What the rules tell for a day, from the tasks as the run left them: a mail for each kind and
// subject that is alive, known and has an address.
QStringList expectedMails(Sesion &s, QDate day)
{
    QStringList mails;
    Recordset r = s.morvane->OpenSnapshot(
        "select tip, ida from TareasAgenda where (medio = 1 or medio = 3) and est = 0 and "
        "(fcreacion = ? or dia = ?) and (fmedio is null or fmedio = ?) and (tip in (-46, -51, -43, "
        "-42, -41, -50, -71, -72, -70) or (tip > 0 and medio = 1)) group by tip, ida",
        day, day, day);
    for (; !r.EOF_(); r.MoveNext()) {
        const int tip = r[0].toInt(), ida = r[1].toInt();
        const bool ofClient = tip == -43 || tip <= -70;
        const Valor mail =
            ofClient ? s.clientes->Leer("select email from clientes where idc = ?", ida)
                     : s.clientes->Leer("select email from clientes inner join mascotas on "
                                        "clientes.idc = mascotas.idc where idm = ? and dec = 0",
                                        ida);
        const QString subject = tip == -46 || tip == -51 ? u"Happy birthday"_s
                                : tip == -70             ? u"Prepaid medicine"_s
                                                         : u"Notice from"_s;
        if (mail.toText().contains(u'@'))
            mails << mail.toText() + u' ' + subject;
    }
    mails.sort();
    return mails;
}

QStringList received(const QList<CorreoRecibido> &mails)
{
    QStringList lines;
    for (const CorreoRecibido &m : mails) {
        QString subject = m.asunto;
        for (const QString &known : {u"Happy birthday"_s, u"Notice from"_s})
            if (m.asunto.contains(known))
                subject = known;
        lines << m.para.join(u',') + u' ' + subject;
        EXPECT_FALSE(m.cuerpo.trimmed().isEmpty()) << m.asunto.toStdString();
    }
    lines.sort();
    return lines;
}

} // namespace

TEST_F(Program, TenWorkingDaysSendWhatTheRulesTellAndNothingTwice)
{
    if (KELVARA_SANITIZED)
        GTEST_SKIP() << "the clock's shim and the sanitizer's do not load together";
    makeDemo();
    ServidorDeCorreo server;
    ASSERT_TRUE(server.Vive());
    connectTo(server);
    look([](Sesion &s) { // clients who asked to be reminded
        s.morvane->Execute("update TareasAgenda set medio = 1 where tip > 0 and dia > ?",
                           s.reloj.hoy);
    });
    QDate day = QDate::currentDate();
    if (QStandardPaths::findExecutable(u"faketime"_s).isEmpty())
        GTEST_SKIP() << "no tool to shift the clock";
    ASSERT_EQ(runDayAt(day), 0);

    qsizetype before = 0, withMails = 0;
    QSet<QString> kinds;
    for (int i = 0; i < 10; ++i) {
        SCOPED_TRACE(day.toString(Qt::ISODate).toStdString());
        const auto all = server.Recibidos();
        const auto today = all.mid(before);
        before = all.size();
        withMails += !today.isEmpty();
        look([&](Sesion &s) {
            EXPECT_EQ(received(today).join(u'\n').toStdString(),
                      expectedMails(s, day).join(u'\n').toStdString());
            // A reminder that went alone for its patient is noted on its dose.
            Recordset r = s.morvane->OpenSnapshot(
                "select ida, max(artaux), max(des) from TareasAgenda where tip = -42 and fmedio = "
                "? and medio < 4 group by ida having count(*) = 1",
                day);
            for (; !r.EOF_(); r.MoveNext())
                EXPECT_EQ(s.clientes
                              ->Leer("select max(ana) from artplan where idm = ? and ida = ? and "
                                     "dos = ?",
                                     r[0], r[1], r[2].toText().toInt())
                              .toInt(),
                          -1)
                    << r[0].toInt();
            Recordset t = s.morvane->OpenSnapshot(
                "select distinct tip from TareasAgenda where fmedio = ?", day);
            for (; !t.EOF_(); t.MoveNext())
                kinds.insert(t[0].toInt() > 0 ? u"appointment"_s : t[0].toText());
            EXPECT_EQ(Filas(*s.morvane, "select * from errores"), QString());
        });
        do
            day = day.addDays(1);
        while (day.dayOfWeek() > Qt::Friday);
        ASSERT_EQ(runDayAt(day), 0);
    }
    EXPECT_GE(withMails, 5) << "or the clinic has tested nothing";
    EXPECT_GE(kinds.size(), 4) << kinds.values().join(u' ').toStdString();

    // The server goes away, with mail or letter chosen.
    server.Parar();
    do
        day = day.addDays(1);
    while (day.dayOfWeek() > Qt::Friday);
    look([&](Sesion &s) {
        for (const char *measure : {"MedidasCumple", "MedidasRevac", "MedidasDeudores"})
            GuardarAjuste(s, measure, 3);
        // Somebody has a birthday and somebody a dose ahead, whatever the demo brought.
        s.clientes->Execute("update mascotas set fecn = ? where idm = (select min(idm) from "
                            "mascotas where dec = 0)",
                            day.addYears(-3));
    });
    ASSERT_EQ(runDayAt(day), 0);
    look([&](Sesion &s) {
        EXPECT_EQ(s.morvane->Leer("select count(*) from pizarra where dibujo = 116").toInt(), 1);
        // The letters count as sent: nobody was there to be asked about them.
        EXPECT_GE(s.morvane
                      ->Leer("select count(*) from TareasAgenda where fcreacion = ? and tip in "
                             "(-46, -42, -43) and medio = 2 and fmedio = ?",
                             day, day)
                      .toInt(),
                  1);
        EXPECT_EQ(s.morvane
                      ->Leer("select count(*) from TareasAgenda where fcreacion = ? and tip in "
                             "(-46, -42, -43) and est = 0 and medio in (1, 3)",
                             day)
                      .toInt(),
                  0);
        EXPECT_EQ(s.morvane
                      ->Leer("select count(*) from TareasAgenda where fcreacion = ? and tip in "
                             "(-51, -41, -50, -71) and (medio = 2 or fmedio is not null)",
                             day)
                      .toInt(),
                  0);
    });
}

TEST_F(Program, KilledWhileItSendsTheNextStartSendsTheRest)
{
    makeDemo();
    ServidorDeCorreo server({u"--slow"_s, u"0.03"_s});
    ASSERT_TRUE(server.Vive());
    connectTo(server);
    addClientsToWriteTo();
    int kills = 0;
    for (const int after : {1, 9, 17, 30}) {
        QProcess p;
        prepare(p);
        p.start(binary(), dayArguments());
        waitForMails(server, after);
        QThread::msleep(ulong(7 * after)); // at another moment of a message each time
        ::kill(pid_t(p.processId()), SIGKILL);
        p.waitForFinished();
        kills += p.exitStatus() == QProcess::CrashExit;
        look([](Sesion &s) {
            EXPECT_EQ(s.configuracion["FechaUltimoInicio"].toDate(), s.reloj.hoy);
        });
    }
    ASSERT_EQ(kills, 4);
    ASSERT_EQ(runDay(), 0);

    const auto counts = arrivals(server);
    EXPECT_EQ(counts.size(), 40) << "none is lost";
    int repeated = 0;
    for (const int n : counts)
        repeated += n - 1;
    EXPECT_LE(repeated, kills) << "none is repeated but the one under way";
    const qsizetype total = server.Recibidos().size();
    look([total, repeated, kills](Sesion &s) {
        EXPECT_EQ(s.morvane
                      ->Leer("select count(*) from TareasAgenda where tip = -72 and ida >= 20000 "
                             "and fmedio is null")
                      .toInt(),
                  0);
        EXPECT_LE(total, expectedMails(s, s.reloj.hoy).size() + kills);
        EXPECT_GE(total, expectedMails(s, s.reloj.hoy).size() + repeated);
    });
    ASSERT_EQ(runDay(), 0);
    EXPECT_EQ(server.Recibidos().size(), total) << "it is over";
}

TEST_F(Program, TwoTerminalsNeverSendAtOnce)
{
    makeDemo();
    ServidorDeCorreo server({u"--slow"_s, u"0.06"_s});
    ASSERT_TRUE(server.Vive());
    connectTo(server);
    addClientsToWriteTo();
    QProcess first;
    prepare(first);
    first.start(binary(), dayArguments());
    ASSERT_TRUE(first.waitForStarted());
    waitForMails(server, 3);
    EXPECT_EQ(runDay(), 0) << "it does not wait for the whole run";
    EXPECT_EQ(first.state(), QProcess::Running);
    ASSERT_TRUE(first.waitForFinished(60000));
    EXPECT_EQ(first.exitCode(), 0);
    const auto counts = arrivals(server);
    EXPECT_EQ(counts.size(), 40);
    for (auto i = counts.begin(); i != counts.end(); ++i)
        EXPECT_EQ(i.value(), 1) << i.key().toStdString();
    QSet<int> connections;
    for (const CorreoRecibido &c : server.Recibidos())
        connections.insert(c.conexion);
    EXPECT_EQ(connections.size(), 1);
}
