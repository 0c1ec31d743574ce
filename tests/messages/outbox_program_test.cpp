// The outbox of the program as started by cron: a real process, a real mail server, real kills.

#include "app/running_program.h"

#include "agenda/tasks.h"
#include "messages/mail_account.h"
#include "store/settings_row.h"
#include "support/smtp_server.h"

#include <QHash>
#include <QThread>

using namespace messages;

namespace
{

class SendingProgram : public Program
{
protected:
    // Creates a demo clinic that sends through this server.
    void clinicOn(const MailServer &server)
    {
        ASSERT_TRUE(server.lives());
        Demo();
        look([&](Sesion &s) {
            saveMailAccount(s, {u"vet@clinic.example"_s, u"llave"_s, u"localhost"_s,
                                server.portNumber(), Encryption::None});
        });
    }

    // Forty clients to write to today, in addition to what the day itself finds.
    void addClientsToWriteTo()
    {
        look([](Sesion &s) {
            Lote batch(s);
            for (int i = 0; i < 40; ++i) {
                s.clientes->Execute("insert into clientes (idc, ayn, email) values (?, 'C', ?)",
                                    20000 + i, u"c%1@x.example"_s.arg(i));
                agenda::Task t;
                t.tip = agenda::TaskKind::Frequent;
                t.ida = 20000 + i;
                t.medio = 1;
                t.fcreacion = s.reloj.hoy;
                AgregarTarea(s, t);
            }
            batch.commit();
        });
    }

    // The number of mails that each of the forty got.
    static QHash<QString, int> arrivals(const MailServer &server)
    {
        QHash<QString, int> counts;
        for (const ReceivedMail &c : server.receivedMails())
            if (c.recipient.value(0).endsWith(u"@x.example"_s))
                ++counts[c.recipient[0]];
        return counts;
    }

    static void waitForMails(const MailServer &server, qsizetype howMany)
    {
        for (int i = 0; i < 600 && server.receivedMails().size() < howMany; ++i)
            QThread::msleep(50);
    }
};

// The mails to expect for a day, from the tasks as the run left them: one for each kind and subject
// that is alive, known and has an address.
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
        const store::Value mail =
            ofClient ? s.clientes->read("select email from clientes where idc = ?", ida)
                     : s.clientes->read("select email from clientes inner join mascotas on "
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

QDate nextWorkingDay(QDate day)
{
    return day.addDays(day.dayOfWeek() < Qt::Friday ? 1 : 8 - day.dayOfWeek());
}

QStringList received(const QList<ReceivedMail> &mails)
{
    QStringList lines;
    for (const ReceivedMail &m : mails) {
        QString subject = m.subject;
        for (const QString &known : {u"Happy birthday"_s, u"Notice from"_s})
            if (m.subject.contains(known))
                subject = known;
        lines << m.recipient.join(u',') + u' ' + subject;
        EXPECT_FALSE(m.body.trimmed().isEmpty()) << m.subject.toStdString();
    }
    lines.sort();
    return lines;
}

} // namespace

TEST_F(SendingProgram, TenWorkingDaysSendWhatTheRulesTellAndNothingTwice)
{
    if (const char *why = withoutClock())
        GTEST_SKIP() << why;
    MailServer server;
    clinicOn(server);
    look([](Sesion &s) { // clients who asked to be reminded
        s.morvane->Execute("update TareasAgenda set medio = 1 where tip > 0 and dia > ?",
                           s.reloj.hoy);
    });
    QDate day = QDate::currentDate();
    ASSERT_EQ(dayOf(day).state, 0);

    qsizetype before = 0, withMails = 0;
    QSet<QString> kinds;
    for (int i = 0; i < 10; ++i) {
        SCOPED_TRACE(day.toString(Qt::ISODate).toStdString());
        const auto all = server.receivedMails();
        const auto today = all.mid(before);
        before = all.size();
        withMails += !today.isEmpty();
        look([&](Sesion &s) {
            EXPECT_EQ(received(today).join(u'\n').toStdString(),
                      expectedMails(s, day).join(u'\n').toStdString());
            // If a patient had only one reminder, its dose is marked.
            Recordset r = s.morvane->OpenSnapshot(
                "select ida, max(artaux), max(des) from TareasAgenda where tip = -42 and fmedio = "
                "? and medio < 4 group by ida having count(*) = 1",
                day);
            for (; !r.EOF_(); r.MoveNext())
                EXPECT_EQ(s.clientes
                              ->read("select max(ana) from artplan where idm = ? and ida = ? and "
                                     "dos = ?",
                                     r[0], r[1], r[2].toText().toInt())
                              .toInt(),
                          -1)
                    << r[0].toInt();
            Recordset t = s.morvane->OpenSnapshot(
                "select distinct tip from TareasAgenda where fmedio = ?", day);
            for (; !t.EOF_(); t.MoveNext())
                kinds.insert(t[0].toInt() > 0 ? u"appointment"_s : t[0].toText());
            EXPECT_EQ(allRows(*s.morvane, "select * from errores"), QString());
        });
        day = nextWorkingDay(day);
        ASSERT_EQ(dayOf(day).state, 0);
    }
    EXPECT_GE(withMails, 5) << "or the clinic has tested nothing";
    EXPECT_GE(kinds.size(), 4) << kinds.values().join(u' ').toStdString();

    // The server goes away while the setting is "mail or letter".
    server.stop();
    day = nextWorkingDay(day);
    look([&](Sesion &s) {
        for (const char *measure : {"MedidasCumple", "MedidasRevac", "MedidasDeudores"})
            store::saveSetting(s, measure, 3);
        // Makes sure that there is a birthday and an upcoming dose, whatever the demo contains.
        s.clientes->Execute("update mascotas set fecn = ? where idm = (select min(idm) from "
                            "mascotas where dec = 0)",
                            day.addYears(-3));
    });
    ASSERT_EQ(dayOf(day).state, 0);
    look([&](Sesion &s) {
        EXPECT_EQ(s.morvane->read("select count(*) from pizarra where dibujo = 116").toInt(), 1);
        const auto made = [&](const char *where) {
            return s.morvane
                ->read(std::string("select count(*) from TareasAgenda where fcreacion = ? and ")
                           + where,
                       day)
                .toInt();
        };
        // The letters count as sent, because nobody was there to ask.
        EXPECT_GE(made("tip in (-46, -42, -43) and medio = 2 and fmedio = fcreacion"), 1);
        EXPECT_EQ(made("tip in (-46, -42, -43) and est = 0 and medio in (1, 3)"), 0);
        EXPECT_EQ(made("tip in (-51, -41, -50, -71) and (medio = 2 or fmedio is not null)"), 0);
    });
}

TEST_F(SendingProgram, KilledWhileItSendsTheNextStartSendsTheRest)
{
    MailServer server({u"--slow"_s, u"0.03"_s});
    clinicOn(server);
    addClientsToWriteTo();
    int kills = 0;
    for (const int after : {1, 9, 17, 30}) {
        QProcess p;
        begin(p, dayArguments());
        waitForMails(server, after);
        QThread::msleep(ulong(7 * after)); // at a different point of a message each time
        kills += kill(p);
        look([](Sesion &s) {
            EXPECT_EQ(s.configuracion["FechaUltimoInicio"].toDate(), s.reloj.hoy);
        });
    }
    ASSERT_EQ(kills, 4);
    ASSERT_EQ(Day().state, 0);

    const auto counts = arrivals(server);
    EXPECT_EQ(counts.size(), 40) << "none is lost";
    int repeated = 0;
    for (const int n : counts)
        repeated += n - 1;
    EXPECT_LE(repeated, kills) << "none is repeated but the one under way";
    const qsizetype total = server.receivedMails().size();
    look([total, repeated, kills](Sesion &s) {
        EXPECT_EQ(s.morvane
                      ->read("select count(*) from TareasAgenda where tip = -72 and ida >= 20000 "
                             "and fmedio is null")
                      .toInt(),
                  0);
        EXPECT_LE(total, expectedMails(s, s.reloj.hoy).size() + kills);
        EXPECT_GE(total, expectedMails(s, s.reloj.hoy).size() + repeated);
    });
    ASSERT_EQ(Day().state, 0);
    EXPECT_EQ(server.receivedMails().size(), total) << "it is over";
}

TEST_F(SendingProgram, TwoTerminalsNeverSendAtOnce)
{
    MailServer server({u"--slow"_s, u"0.06"_s});
    clinicOn(server);
    addClientsToWriteTo();
    QProcess first;
    begin(first, dayArguments());
    waitForMails(server, 3);
    EXPECT_EQ(Day().state, 0) << "it does not wait for the whole run";
    EXPECT_EQ(first.state(), QProcess::Running);
    EXPECT_EQ(finish(first).state, 0);
    const auto counts = arrivals(server);
    EXPECT_EQ(counts.size(), 40);
    EXPECT_EQ(counts.values().count(1), 40) << "none twice";
    QSet<int> connections;
    for (const ReceivedMail &c : server.receivedMails())
        connections.insert(c.connection);
    EXPECT_EQ(connections.size(), 1);
}
