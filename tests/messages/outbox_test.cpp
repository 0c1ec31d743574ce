#include "messages/outbox.h"

#include "agenda/tasks.h"
#include "board/board_lines.h"
#include "messages/mail_account.h"
#include "messages/outbox_list.h"
#include "messages/planned_notices.h"
#include "startup/daily_automation.h"
#include "store/settings_row.h"
#include "support/clinic.h"
#include "support/smtp_server.h"
#include "texts/texts.h"

using namespace messages;
using namespace Qt::StringLiterals;

namespace
{

class Outbox : public Clinic
{
protected:
    Outbox()
    {
        s.clinic = {u"El Ombú"_s, u"Dr. Ruiz"_s, u"Rivera 12"_s, u"555-0101"_s};
        s.programFolder = folder.path() + u'/';
        const auto run = [this](const char *sql) { s.clientes->Execute(sql); };
        run("insert into clientes (idc, ayn, email) values (1, 'Ana', 'ana@x.example')");
        run("insert into clientes (idc, ayn, email) values (2, 'Eva', 'eva@x.example')");
        run("insert into clientes (idc, ayn) values (3, 'Leo')");
        run("insert into mascotas (idm, idc, nom) values (11, 1, 'Toby')");
        run("insert into mascotas (idm, idc, nom) values (12, 2, 'Luna')");
        run("insert into mascotas (idm, idc, nom) values (13, 3, 'Rex')");
        run("insert into mascotas (idm, idc, nom, dec) values (14, 1, 'Gardel', -1)");
        run("insert into mascotas (idm, idc, nom) values (15, 99, 'Nobody''s')");
        // Each text names its template.
        for (const char *column :
             {"mensajeriadeudorescarta", "mensajeriadeudoresmail", "MensajeriaMedicinaPrepaga",
              "mensajeriacumplecarta", "mensajeriacumplemail", "MensajeriaCumpleMailDestacados",
              "MensajeriaSoloADestacados", "mensajeriaalimento", "mensajeriadescont",
              "mensajeriaturno", "mensajeriavencimientoscarta", "mensajeriavencimientosmail",
              "MensajeriaNuevoCliente", "MensajeriaFrecuente"})
            store::saveSetting(s, column, QString::fromLatin1(column) + u" <nomcli> <nommas>"_s);
        measures(1);
    }

    void measures(int value)
    {
        for (const char *column : {"MedidasCumple", "MedidasRevac", "MedidasDeudores"})
            store::saveSetting(s, column, value);
    }

    int task(int tip, int ida, int medio, bool withDay = false, qint64 artaux = 0,
             const QString &des = {})
    {
        agenda::Task t;
        t.tip = tip;
        t.ida = ida;
        t.medio = medio;
        t.fcreacion = hoy;
        t.artaux = artaux;
        t.des = des;
        if (withDay)
            t.dia = hoy;
        return AgregarTarea(s, t);
    }

    void connectTo(const MailServer &server)
    {
        ASSERT_TRUE(server.lives());
        saveMailAccount(s, {u"vet@clinic.example"_s, u"llave"_s, u"localhost"_s,
                            server.portNumber(), Encryption::None});
        store::saveMachineSetting(s, u"correo/segundos"_s, u"5"_s);
    }

    static QString mails(const MailServer &server)
    {
        QString t;
        for (const ReceivedMail &c : server.receivedMails())
            t += c.recipient.join(u',') + u": "_s + c.subject + u" / "_s + c.body + u'\n';
        return t;
    }
    static QString letterFor(const QString &name)
    {
        return u"Want to print letter to: "_s + name + u'?';
    }
    /// Sends from another session and calls @p meanwhile whenever that asks about a letter.
    void sendMeanwhile(const std::function<void()> &meanwhile,
                       std::initializer_list<std::pair<QString, bool>> letters)
    {
        struct Acting : TestDialogs {
            std::function<void()> act;
            bool Pregunta(const QString &text) override
            {
                act();
                return TestDialogs::Pregunta(text);
            }
        } dialogs;
        dialogs.act = meanwhile;
        for (const auto &[name, yes] : letters)
            dialogs.wait(letterFor(name), yes);
        Sesion other(dialogs, impresion, store::Language::English);
        other.reloj = s.reloj;
        store::setDataFolder(other, folder.path());
        ASSERT_FALSE(store::openStore(other));
        EnviarMensajes(other, hoy);
    }
    QString tasks()
    {
        return allRows(*s.morvane, "select tip, ida, medio, fmedio from TareasAgenda where ida > 0 "
                                   "order by id");
    }
    QString errors() { return allRows(*s.morvane, "select des from errores"); }
    QString board(const char *where = "")
    {
        return allRows(*s.morvane,
                       std::string("select dibujo, codigo1, codigo2, mensaje from pizarra ")
                           + where);
    }
};

} // namespace

TEST_F(Outbox, EachKindGoesToItsAddresseeUnderItsSubject)
{
    MailServer server;
    connectTo(server);
    for (const int tip : {-46, -51, -42, -41, -50})
        task(tip, 11, 1);
    for (const int tip : {-43, -70, -71, -72})
        task(tip, 2, 3);
    task(7, 12, 1, true);
    for (const int tip : {-44, -45, -48, -49, -100}) // kinds for which nothing is sent
        task(tip, 1, 1);
    store::saveSetting(s, "MensajeriaNuevoCliente", u" \n"_s); // nor without a text
    EnviarMensajes(s, hoy);
    // Ordered by kind, lowest number first. On purpose: the greeting for featured clients comes
    // from a column that no form edits.
    EXPECT_EQ(mails(server),
              u"eva@x.example: Notice from El Ombú / MensajeriaFrecuente Eva \n"
              u"eva@x.example: Prepaid medicine / MensajeriaMedicinaPrepaga Eva \n"
              u"ana@x.example: El Ombú Happy birthday / MensajeriaSoloADestacados Ana Toby\n"
              u"ana@x.example: Notice from El Ombú / mensajeriadescont Ana Toby\n"
              u"ana@x.example: El Ombú Happy birthday / mensajeriacumplemail Ana Toby\n"
              u"eva@x.example: Notice from El Ombú / mensajeriadeudoresmail Eva \n"
              u"ana@x.example: Notice from El Ombú / mensajeriavencimientosmail Ana Toby\n"
              u"ana@x.example: Notice from El Ombú / mensajeriaalimento Ana Toby\n"
              u"eva@x.example: Notice from El Ombú / mensajeriaturno Eva Luna\n"_s);
    EXPECT_EQ(allRows(*s.morvane, "select tip from TareasAgenda where ida > 0 and fmedio is null "
                                  "order by tip"),
              u"-100\n-71\n-49\n-48\n-45\n-44\n"_s);
    EXPECT_EQ(board(), u"109|8|0|We must send 1 appointments reminders by for today.\n"_s);

    EnviarMensajes(s, hoy); // nothing is sent twice
    EXPECT_EQ(server.receivedMails().size(), 9);
}

TEST_F(Outbox, OneMessagePerReasonAndAddressee)
{
    MailServer server;
    connectTo(server);
    for (int dose = 1; dose <= 2; ++dose)
        s.clientes->Execute("insert into artplan (idm, ida, dos, si) values (11, ?, 4, 0)", dose);
    task(-42, 11, 1, false, 1, u"4"_s);
    task(-42, 12, 1);
    task(-42, 11, 3, false, 2, u"4"_s);
    const int done = task(-42, 12, 1);
    s.morvane->Execute("update TareasAgenda set est = -1 where id = ?", done);
    task(-42, 12, 2);
    EnviarMensajes(s, QDate(2026, 3, 10)); // the tasks are of today, not of that day
    EXPECT_EQ(mails(server), QString());
    ask.wait(letterFor(u"Luna"_s), false);
    EnviarMensajes(s, hoy);
    EXPECT_EQ(server.receivedMails().size(), 2);
    EXPECT_EQ(tasks(), u"-42|11|1|2026-03-11\n-42|12|1|2026-03-11\n-42|11|3|2026-03-11\n"
                       u"-42|12|1|\n-42|12|2|2026-03-11\n"_s);
    // On purpose: only the dose of the first task is marked, not those covered by the same message.
    EXPECT_EQ(allRows(*s.clientes, "select ida, ana from artplan order by ida"), u"1|-1\n2|0\n"_s);
}

TEST_F(Outbox, NothingGoesToTheDeceasedOrToWhoIsGone)
{
    MailServer server;
    connectTo(server);
    for (const int medio : {1, 2}) {
        for (const int idm : {14, 15, 16})
            task(-46, idm, medio);
        task(-43, 99, medio);
    }
    EnviarMensajes(s, hoy);
    EXPECT_EQ(mails(server), QString());
    EXPECT_EQ(allRows(*s.morvane, "select tip from TareasAgenda where fmedio is not null"),
              QString());
}

TEST_F(Outbox, AMailThatFailsBecomesALetterWhereTheKindAndTheMeasureSaySo)
{
    MailServer server({u"--refuse"_s, u"ana@x.example"_s});
    for (const int measure : {1, 3}) {
        SCOPED_TRACE(measure);
        connectTo(server);
        measures(measure);
        s.morvane->Execute("delete * from TareasAgenda");
        for (const int tip : {-46, -51, -42, -41, -50, 7}) {
            task(tip, 11, 1, tip > 0);
            task(tip, 13, 1, tip > 0);
        }
        for (const int tip : {-43, -70, -71, -72})
            task(tip, 3, 3);
        // On purpose: a debt becomes a letter whatever the setting says.
        const QStringList letters =
            measure == 3 ? QStringList{u"Toby"_s, u"Rex"_s, u"Leo"_s, u"Toby"_s, u"Rex"_s}
                         : QStringList{u"Leo"_s};
        for (const QString &name : letters)
            ask.wait(letterFor(name), false);
        EnviarMensajes(s, hoy);
        EXPECT_EQ(allRows(*s.morvane, "select tip, ida from TareasAgenda where medio = 2 order by "
                                      "tip, ida"),
                  measure == 3 ? u"-46|11\n-46|13\n-43|3\n-42|11\n-42|13\n"_s : u"-43|3\n"_s);
        EXPECT_EQ(allRows(*s.morvane, "select tip from TareasAgenda where medio <> 2 and fmedio is "
                                      "not null"),
                  QString());
    }
    EXPECT_EQ(errors().count(u"550"_s), 2) << "once a run, however many it befell";
    EXPECT_EQ(mails(server), QString());
    EXPECT_EQ(allRows(*s.clientes, "select idc, FaltaMail from clientes order by idc"),
              u"1|0\n2|0\n3|-1\n"_s);
    EXPECT_EQ(board(), QString()) << "the session stood";
}

TEST_F(Outbox, ASessionThatFailsMovesWhatTheMeasuresLetGoByLetterAndTellsTheBoardOnce)
{
    for (const int tip : {-46, -51, -42, -41})
        task(tip, 11, 1);
    task(-43, 2, 3);
    const int done = task(-46, 12, 1);
    s.morvane->Execute("update TareasAgenda set est = -1 where id = ?", done);
    ask.wait(u"Can not log messaging"_s);
    EnviarMensajes(s, hoy);
    EXPECT_EQ(tasks(), u"-46|11|1|\n-51|11|1|\n-42|11|1|\n-41|11|1|\n-43|2|3|\n"
                       u"-46|12|1|\n"_s);
    const QString line = u"116|34|0|Unable to send emails. Please configure your email. (click "
                         u"here for instructions)\n"_s;
    EXPECT_EQ(board(), line);
    saveMailAccount(s, {u"vet@clinic.example"_s, u"llave"_s, {}});
    ask.wait(u"The mail server is missing"_s);
    EnviarMensajes(s, hoy);
    EXPECT_EQ(errors(), QString()) << "the user has been told";

    MailServer server;
    connectTo(server);
    server.stop();
    measures(3);
    ask.wait(u"The mail could not be sent: "_s);
    // The letters follow at once. No drops a letter, whose task is marked before the question.
    ask.wait(letterFor(u"Toby"_s), true);
    ask.wait(letterFor(u"Eva"_s), false);
    ask.wait(letterFor(u"Toby"_s), true);
    EnviarMensajes(s, hoy);
    EXPECT_EQ(tasks(), u"-46|11|2|2026-03-11\n-51|11|1|\n-42|11|2|2026-03-11\n-41|11|1|\n"
                       u"-43|2|2|2026-03-11\n-46|12|1|\n"_s);
    EXPECT_EQ(impresion.printed, QStringList{u"Congratulations on birthday - Toby (+1)"_s});
    EXPECT_EQ(board(), line);
    EXPECT_TRUE(errors().contains(u"onnect"_s)) << errors().toStdString();
}

TEST_F(Outbox, AServerThatIsGivenUpInTheMiddleIsTold)
{
    MailServer server({u"--hang-at"_s, u"2"_s});
    connectTo(server);
    store::saveMachineSetting(s, u"correo/segundos"_s, u"1"_s);
    measures(3);
    for (const int tip : {-72, -71, -70})
        task(tip, 1, 1);
    task(-46, 11, 3);
    s.clientes->Execute("update clientes set email = '@' where idc = 2");
    task(-41, 12, 1); // its turn comes after the server is lost, so its address is not checked
    ask.wait(u"The mail could not be sent: "_s);
    ask.wait(letterFor(u"Toby"_s), false);
    EnviarMensajes(s, hoy);
    // A server that has the whole text but does not answer may have accepted it: never sent twice.
    EXPECT_EQ(tasks(),
              u"-72|1|1|2026-03-11\n-71|1|1|2026-03-11\n-70|1|1|2026-03-11\n-46|11|2|2026-03-11\n"
              u"-41|12|1|\n"_s);
    EXPECT_EQ(allRows(*s.morvane, "select dibujo from pizarra"), u"116\n"_s);
    EXPECT_EQ(errors().count(u'\n'), 1) << errors().toStdString();
}

TEST_F(Outbox, LettersAreMarkedBeforeTheQuestion)
{
    task(-43, 3, 2, true);
    task(-43, 3, 2, true);
    task(-71, 3, 2); // a kind without a letter
    QString before;
    sendMeanwhile([&] { before = tasks(); }, {{u"Leo"_s, false}});
    EXPECT_EQ(before, u"-43|3|2|2026-03-11\n-43|3|2|2026-03-11\n-71|3|2|\n"_s);
    EXPECT_EQ(impresion.printed, QStringList());
}

TEST_F(Outbox, WhatAnotherTerminalDeletesOrTakesMeanwhileIsNotAskedAbout)
{
    task(-43, 2, 2);
    task(-43, 3, 2);
    task(-43, 1, 2);
    // Meanwhile one task is deleted, and another terminal takes the letter of a second one.
    sendMeanwhile(
        [&] {
            s.morvane->Execute("delete * from TareasAgenda where ida = 3");
            s.morvane->Execute("update TareasAgenda set fmedio = ? where ida = 2", hoy);
        },
        {{u"Ana"_s, true}});
    EXPECT_EQ(tasks(), u"-43|2|2|2026-03-11\n-43|1|2|2026-03-11\n"_s);
    EXPECT_EQ(impresion.printed, QStringList{u"Debt reminder - Ana"_s});
}

TEST_F(Outbox, DeliveryListsHoldWhatIsBroughtHomeToday)
{
    s.finanzas->Execute("delete * from flcategorias");
    s.finanzas->Execute("delete * from articulos");
    const auto category = [this](int id, const char16_t *kind, int service) {
        s.finanzas->Execute("insert into flcategorias (idcat, nom, suministro, idserv) values (?, "
                            "'c', ?, ?)",
                            id, kind, service);
        s.finanzas->Execute("insert into articulos (ida, nom, idcat) values (?, ?, ?)", id * 10,
                            u"P%1"_s.arg(id), id);
    };
    category(1, u"c", 50);
    category(3, u"p", 51);
    category(4, u"p", 52);
    s.clientes->Execute("update clientes set dir = 'Mitre 3', tel2 = '4812', telc2 = '099' where "
                        "idc = 2");
    task(51, 12, 4, true, 30);
    task(52, 11, 4, true, 40);
    task(51, 11, 4, true, 10); // product 10 is food
    task(50, 11, 4, true, 10);
    task(51, 11, 1, true, 30); // not a delivery
    task(51, 13, 4, true, 0);
    MailServer server;
    connectTo(server);
    // A faulty definition costs only its own list, and the message names the file.
    QFile definition(folder.filePath(u"reportes/revacEN.html"_s));
    ASSERT_TRUE(definition.open(QIODevice::WriteOnly));
    ask.wait(u"revacEN.html"_s);
    ask.wait(s(text::PrintFoodListQuestion), false);
    EnviarMensajes(s, hoy);
    EXPECT_EQ(allRows(*s.morvane, "select tip from TareasAgenda where medio = 4 and fmedio is not "
                                  "null"),
              u"50\n"_s);
    EXPECT_EQ(allRows(*s.rep97, "select mas, ali, pro from auxrealimentacion"), u"Toby|P1|Ana\n"_s);
    ASSERT_TRUE(definition.remove());
    ask.wait(s(text::PrintVaccinationQuestion), true);
    EnviarMensajes(s, hoy);
    EXPECT_EQ(impresion.printed.size(), 1);
    Base &rep97 = *s.rep97;
    EXPECT_EQ(allRows(rep97, "select mas, vac, pro, dir, tel from auxrevacunacion"),
              u"Toby|P4|Ana||\nLuna|P3|Eva|Mitre 3|4812 / 099\n"_s);
    EXPECT_EQ(allRows(*s.morvane, "select tip, ida from TareasAgenda where medio = 4 and fmedio is "
                                  "null order by tip"),
              u"51|11\n51|13\n"_s);
    EXPECT_EQ(server.receivedMails().size(), 1);
    EnviarMensajes(s, hoy); // asks nothing again
}

TEST_F(Outbox, WhatWasBrokenOffIsTakenUpByTheNextStartOfTheSameDay)
{
    store::saveSetting(s, "FechaUltimoInicio", hoy.addDays(-1));
    store::saveSetting(s, "FechaUltimoInicioMes", hoy.addMonths(-1));
    int runs = 0;
    std::function<void()> event = [] {
        throw store::StoreError(store::ErrorNumber::PathOrDisk, u"disk"_s);
    };
    const startup::LaterSteps steps{[&](Sesion &, QDate) {
                                        ++runs;
                                        event();
                                        return true;
                                    },
                                    {}};
    EXPECT_THROW(IniciarTareas(s, steps), store::StoreError);
    event = [] {};
    EXPECT_FALSE(IniciarTareas(s, steps)) << "the day stands";
    EXPECT_FALSE(IniciarTareas(s, steps));
    EXPECT_EQ(runs, 2);
    EXPECT_EQ(s.configuracion["FechaUltimoInicioMes"].toDate(), hoy.addMonths(-1))
        << "due for as long as there is no step that carries it out";

    // Another terminal begins the next day and crashes while this one still asks about letters. The
    // mark for that day's outbox must survive.
    store::saveSetting(s, "FechaUltimoInicio", hoy.addDays(-1));
    event = [&] {
        Sesion other(ask, impresion, store::Language::English);
        other.reloj.hoy = hoy.addDays(1);
        store::setDataFolder(other, folder.path());
        ASSERT_FALSE(store::openStore(other));
        const auto dies = [](Sesion &, QDate) -> bool {
            throw store::StoreError(store::ErrorNumber::Internals, {});
        };
        EXPECT_THROW(IniciarTareas(other, {dies, {}}), store::StoreError);
    };
    EXPECT_TRUE(IniciarTareas(s, steps));
    event = [] {};
    s.reloj.hoy = hoy.addDays(1);
    EXPECT_FALSE(IniciarTareas(s, steps));
    EXPECT_EQ(runs, 4);
}

// --- The list and the notices ---

TEST_F(Outbox, TheListTellsWhomWhyHowAndWhether)
{
    s.finanzas->Execute("insert into proveedores (idp, nom) values (5, 'Labs')");
    for (const int tip : {-41, -42, -46, -50, -51})
        task(tip, 11, 1);
    for (const int tip : {-43, -44, -48, -49, -70, -71, -72})
        task(tip, 2, 3);
    task(-45, 5, 2);
    task(-47, 0, 0);
    task(-100, 1, 0);
    task(7, 12, 1, true);
    s.morvane->Execute("update TareasAgenda set fmedio = ? where tip = -41", hoy);
    QString all;
    for (const DayMessage &m : dayMessages(s))
        all += u"%1|%2|%3|%4|%5|%6|"_s.arg(m.tip).arg(m.addressee, m.reason, m.icon, m.byChannel,
                                                      m.state)
               + messageText(s, m) + u'\n';
    EXPECT_EQ(all.toStdString(),
              "-41|Ana|Reminder by low levels of food (commercial offer)|AgendaCom|Email|Outbox|"
              "mensajeriaalimento Ana Toby\n"
              "-42|Ana|Due scheduled product reminder|AgendaVac|Email|Waiting|"
              "mensajeriavencimientosmail Ana Toby\n"
              "-46|Ana|Congratulations on birthday||Email|Waiting|mensajeriacumplemail Ana Toby\n"
              "-50|Ana|Due scheduled product reminder||Email|Waiting|mensajeriadescont Ana Toby\n"
              "-51|Ana|Congratulations on birthday - Featured customer||Email|Waiting|"
              "MensajeriaSoloADestacados Ana Toby\n"
              "-43|Eva|Debt reminder |CtaCteChico|Email/Letter|Waiting|"
              "mensajeriadeudoresmail Eva \n"
              "-44|Eva|Settle arrears.||Email/Letter|Waiting|\n"
              "-48|Eva|Appointment reminder||Email/Letter|Waiting|\n"
              "-49|Eva|Answer to an appointment asked for on the Internet.||Email/Letter|Waiting|"
              "mensajeriaturno Eva \n"
              "-70|Eva|Reminder for prepaid medical due||Email/Letter|Waiting|"
              "MensajeriaMedicinaPrepaga Eva \n"
              "-71|Eva|Thanks to new customers||Email/Letter|Waiting|MensajeriaNuevoCliente Eva \n"
              "-72|Eva|Customer Loyalty 'Frequently' who have not visited the veterinary||"
              "Email/Letter|Waiting|MensajeriaFrecuente Eva \n"
              "-45|Labs|Restock the clinic.||Letter|Waiting|\n");

    // "Mail or letter" means a letter for clients without an address.
    s.clientes->Execute("update clientes set email = '' where idc = 2");
    const auto list = dayMessages(s);
    const auto debt = std::ranges::find(list, -43, &DayMessage::tip);
    ASSERT_NE(debt, list.end());
    EXPECT_EQ(messageText(s, *debt), u"mensajeriadeudorescarta Eva "_s);
}

TEST_F(Outbox, NoticesOfTheFourGroupsCoverTheDaysSinceTheStartBeforeTheLast)
{
    store::saveSetting(s, "FechaInicioAnterior", QDate(2026, 2, 20)); // more than ten days ago
    s.clientes->Execute("update mascotas set ser = 1 where idm = 12");
    s.finanzas->Execute("delete * from articulos");
    s.finanzas->Execute("insert into articulos (ida, nom) values (1, 'Rabia')");
    const struct {
        int idm;
        QDate rep;
        int si;
    } doses[] = {{13, {2026, 2, 19}, 0},
                 {13, {2026, 2, 20}, 0},
                 {11, {2026, 2, 21}, 2},
                 {11, {2026, 3, 10}, 1 /* given */},
                 {11, hoy, 0},
                 {11, hoy.addDays(1), 0},
                 {12, {2026, 3, 10}, 0},
                 {12, hoy, 2},
                 {14 /* deceased */, hoy, 0}};
    for (int dos = 1; const auto &[idm, rep, si] : doses)
        s.clientes->Execute("insert into artplan (idm, ida, dos, idcat, rep, si) values (?, 1, ?, "
                            "3, ?, ?)",
                            idm, dos++, rep, si);
    const auto notices = [this](int group) {
        QString t;
        for (const PlannedNotice &a : noticesOf(s, NoticesGroup(group)))
            t += a.key + u' ' + a.patient + u' ' + a.owner + u' ' + a.product + u' '
                 + a.expires.toString(Qt::ISODate) + u' ' + a.note + u'\n';
        return t;
    };
    EXPECT_EQ(notices(18), u"13-1-3-20260220 Rex Leo Rabia 2026-02-20 \n"
                           u"11-1-3-20260221 Toby Ana Rabia 2026-02-21 \n"_s);
    const QString moons = u"12-1-3-20260310 Luna Eva Rabia 2026-03-10 \n"_s;
    EXPECT_EQ(notices(19), moons);
    EXPECT_EQ(notices(20), u"11-1-3-20260221 Toby Ana Rabia 2026-02-21 \n"
                           u"11-1-3-20260311 Toby Ana Rabia 2026-03-11 \n"_s);
    EXPECT_EQ(notices(21), moons + u"12-1-3-20260311 Luna Eva Rabia 2026-03-11 \n"_s);

    saveNote(s, u"12-1-3-20260311"_s, u"O'Hara: calls back"_s);
    saveNote(s, u"12-1-3-20260310"_s, u"first"_s);
    saveNote(s, u"12-1-3-20260310"_s, u" \n"_s);
    EXPECT_EQ(notices(21),
              moons + u"12-1-3-20260311 Luna Eva Rabia 2026-03-11 O'Hara: calls back\n"_s);
    EXPECT_EQ(allRows(*s.clientes, "select ID, Texto from AvisosPlanificadas"),
              u"12-1-3-20260311|O'Hara: calls back\n"_s);

    // A previous start today or in the future leaves no days; tomorrow's doses must not appear.
    store::saveSetting(s, "FechaInicioAnterior", hoy);
    for (int group = 18; group <= 21; ++group)
        EXPECT_EQ(notices(group), QString());
}
