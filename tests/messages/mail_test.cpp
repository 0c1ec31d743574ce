#include "messages/mail.h"
#include "messages/mail_account.h"
#include "messages/mail_message.h"
#include "store/settings_row.h"
#include "support/clinic.h"
#include "support/smtp_server.h"

using namespace messages;
using namespace Qt::StringLiterals;

namespace
{

class Mail : public Clinic
{
protected:
    void Account(const MailServer &server, Encryption encryption,
                 const QString &password = u"llave"_s)
    {
        ASSERT_TRUE(server.lives());
        s.programFolder = folder.path() + u'/';
        saveMailAccount(s, {u"vet@clinic.example"_s, password, u"localhost"_s, server.portNumber(),
                            encryption});
        store::saveMachineSetting(s, u"correo/autoridad"_s, server.authority());
        store::saveMachineSetting(s, u"correo/segundos"_s, u"2"_s);
    }

    // Opens a session without a password on a server that behaves as configured.
    std::unique_ptr<MailSession> enter(const MailServer &server)
    {
        Account(server, Encryption::None);
        QString error;
        auto mail = AbrirSesionCorreo(s, &error);
        EXPECT_TRUE(mail) << error.toStdString();
        return mail;
    }

    static QString subjectsOf(const MailServer &server)
    {
        QStringList subjects;
        for (const auto &c : server.receivedMails())
            subjects << c.subject;
        return subjects.join(u' ');
    }

    const QStringList withKey{u"--user"_s, u"vet@clinic.example"_s, u"--password"_s, u"llave"_s};
};

} // namespace

TEST_F(Mail, ALineIsMadeSafeAndCarriesAWholeRun)
{
    s.clinic.nom = u"Clínica \"Ñandú\", S.A."_s;
    const QString subject = u"Clínica Ñandú: ¡feliz cumpleaños para Toby y Öz!"_s;
    for (const Encryption encryption : {Encryption::StartTls, Encryption::Tls, Encryption::None}) {
        QStringList options = withKey;
        if (encryption != Encryption::None)
            options << (encryption == Encryption::Tls ? u"--tls"_s : u"--starttls"_s);
        MailServer server(options);
        Account(server, encryption);
        QString error;
        auto mail = AbrirSesionCorreo(s, &error);
        ASSERT_TRUE(mail) << int(encryption) << error.toStdString();
        EXPECT_EQ(subjectsOf(server), QString()) << "signing on sends nothing";
        EXPECT_TRUE(mail->send(subject, u"a@x.example, b@x.example"_s,
                               u"Estimada José:\r\n.\n<b> =20\rfin"_s))
            << mail->error().toStdString();
        for (int i = 0; i < 3; ++i)
            EXPECT_TRUE(mail->send(u"otro"_s, u"c@x.example"_s, u"2"_s));
        CerrarSesionCorreo(mail);

        const auto received = server.receivedMails();
        ASSERT_EQ(received.size(), 4);
        EXPECT_EQ(received[0].subject, subject);
        EXPECT_EQ(received[0].body, u"Estimada José:\n.\n<b> =20\nfin"_s);
        EXPECT_EQ(received[0].de, u"vet@clinic.example"_s);
        EXPECT_EQ(received[0].recipient, (QStringList{u"a@x.example"_s, u"b@x.example"_s}));
        for (const ReceivedMail &c : received) {
            EXPECT_EQ(c.sure, encryption != Encryption::None);
            EXPECT_EQ(c.connection, received[0].connection) << "one connection for the whole run";
        }
    }
}

TEST_F(Mail, ASessionThatCannotBeTrustedOrEnteredIsNone)
{
    MailServer server(withKey + QStringList{u"--starttls"_s});
    QString error;
    Account(server, Encryption::StartTls, u"otra"_s);
    EXPECT_FALSE(AbrirSesionCorreo(s, &error)) << "wrong password";
    EXPECT_FALSE(error.isEmpty());

    Account(server, Encryption::StartTls);
    store::saveMachineSetting(s, u"correo/autoridad"_s, {});
    EXPECT_FALSE(AbrirSesionCorreo(s, &error)) << "a certificate that nobody vouches for";
    EXPECT_TRUE(error.contains(u"certificate"_s)) << error.toStdString();

    MailServer open(withKey);
    Account(open, Encryption::StartTls);
    EXPECT_FALSE(AbrirSesionCorreo(s)) << "no safe line is offered: the password is not said";

    Account(open, Encryption::None);
    MailAccount c = readMailAccount(s);
    for (const QString &name : {u"local host"_s, u"localhost/x"_s, u"a@localhost"_s}) {
        c.server = name;
        saveMailServer(s, c);
        EXPECT_FALSE(AbrirSesionCorreo(s)) << name.toStdString();
    }
    Account(open, Encryption::None);
    open.stop();
    EXPECT_FALSE(AbrirSesionCorreo(s)) << "nobody there";

    store::saveSetting(s, "passwordmail", store::Value());
    ask.wait(u"Can not log messaging"_s);
    EXPECT_FALSE(AbrirSesionCorreo(s));
}

TEST_F(Mail, OneMessageThatFailsEndsAlone)
{
    MailServer server({u"--refuse"_s, u"no@x.example,nunca@x.example"_s, u"--drop-at"_s, u"3"_s});
    auto mail = enter(server);
    EXPECT_TRUE(mail->send(u"1"_s, u"si@x.example"_s, u"1"_s));
    // Refused addresses are no reason to give up, however many there are in a row.
    for (int i = 0; i < 4; ++i)
        EXPECT_FALSE(mail->send(u"2"_s, u"no@x.example; nunca@x.example"_s, u"2"_s));
    EXPECT_TRUE(mail->send(u"3"_s, u"no@x.example, si@x.example"_s, u"3"_s));
    EXPECT_TRUE(mail->send(u"4"_s, u"si@x.example"_s, u"4"_s)) << "the line breaks here";
    EXPECT_NE(mail->error(), QString());
    EXPECT_TRUE(mail->send(u"5"_s, u"si@x.example"_s, u"5"_s)) << mail->error().toStdString();
    EXPECT_FALSE(mail->send(u"6"_s, u"sin arroba"_s, u"6"_s));
    EXPECT_EQ(subjectsOf(server), u"1 3 5"_s);
}

TEST_F(Mail, ARunIsGivenUpForBreaksInARowAloneAndTellsWhatBroke)
{
    MailServer twice({u"--drop-at"_s, u"1,2"_s});
    auto mail = enter(twice);
    for (int i = 1; i <= 4; ++i)
        EXPECT_TRUE(mail->send(QString::number(i), u"si@x.example"_s, u"x"_s)) << i;
    EXPECT_FALSE(mail->missed());
    EXPECT_EQ(subjectsOf(twice), u"2 4"_s);

    // The error is the first one, not that the second connection fails.
    MailServer dies({u"--die-at"_s, u"1"_s});
    mail = enter(dies);
    mail->send(u"1"_s, u"si@x.example"_s, u"x"_s);
    EXPECT_TRUE(mail->missed());
    const QString reason = mail->error();
    EXPECT_NE(reason, QString());
    QString other;
    EXPECT_FALSE(AbrirSesionCorreo(s, &other));
    EXPECT_NE(reason, other);
}

TEST_F(Mail, AServerThatTakesAFewOnALineGetsTheRestOnAnother)
{
    MailServer server({u"--close-after"_s, u"2"_s});
    auto mail = enter(server);
    for (int i = 1; i <= 5; ++i)
        EXPECT_TRUE(mail->send(QString::number(i), u"si@x.example"_s, u"x"_s))
            << i << mail->error().toStdString();
    EXPECT_EQ(subjectsOf(server), u"1 2 3 4 5"_s);
}

TEST_F(Mail, AServerThatFallsSilentIsNotWaitedForWithEveryMessage)
{
    MailServer mute({u"--mute"_s});
    Account(mute, Encryption::None);
    int rounds = 0;
    EXPECT_FALSE(AbrirSesionCorreo(s, nullptr, [&rounds] { ++rounds; }));
    EXPECT_GT(rounds, 0) << "whoever waits can repaint";

    MailServer server({u"--hang-at"_s, u"2"_s});
    auto mail = enter(server);
    EXPECT_TRUE(mail->send(u"1"_s, u"si@x.example"_s, u"x"_s));
    // A message that the server has completely but does not answer may have arrived, so it counts
    // as sent.
    int uncertain = 0;
    for (int i = 0; i < 30; ++i)
        uncertain += mail->send(u"2"_s, u"si@x.example"_s, u"x"_s);
    EXPECT_EQ(uncertain, 2);
    EXPECT_TRUE(mail->missed());
    mail.reset();
    EXPECT_EQ(subjectsOf(server), u"1"_s);
}

TEST_F(Mail, WhatStandsInNamesAndTextsAddsNoHeaderAndNoRecipient)
{
    MailServer server;
    s.clinic.nom = u"El Ombú\r\nBcc: <evil@y.example>\r\n\r\nx"_s;
    auto mail = enter(server);
    EXPECT_TRUE(mail->send(u"hi\r\nBcc: evil@y.example\n\nbody"_s,
                           u"a@x.example, b@x.example>\r\nRCPT TO:<evil@y.example"_s,
                           u"text\r\n.\r\nMAIL FROM:<evil@y.example>\r\n"_s));
    const auto received = server.receivedMails();
    ASSERT_EQ(received.size(), 1);
    EXPECT_EQ(received[0].recipient, QStringList{u"a@x.example"_s});
    EXPECT_EQ(received[0].subject, u"hi Bcc: evil@y.example body"_s);
    QStringList headers;
    for (const QString &line : received[0].raw.section(u"\r\n\r\n"_s, 0, 0).split(u"\r\n"_s))
        if (!line.startsWith(u' '))
            headers << line.section(u':', 0, 0);
    headers.sort();
    EXPECT_EQ(headers.join(u' ').toStdString(),
              "Auto-Submitted Content-Transfer-Encoding Content-Type Date From MIME-Version "
              "Message-ID Subject To");

    MailAccount c = readMailAccount(s);
    c.user = u"vet@clinic.example>\r\nDATA"_s;
    saveMailAccount(s, c);
    EXPECT_FALSE(AbrirSesionCorreo(s)) << "nor does the sender";
}

TEST_F(Mail, AClientWithoutAnAddressIsMarked)
{
    MailServer server;
    for (int idc = 0;
         const store::Value &email : {store::Value(u"a@x.example"_s), store::Value(u"no at sign"_s),
                                      store::Value(u"@"_s), store::Value()})
        s.clientes->Execute("insert into clientes (idc, email) values (?, ?)", ++idc, email);
    auto mail = enter(server);
    QString sent;
    for (int idc = 1; idc <= 5; ++idc)
        sent += EnviarCorreo(s, *mail, u"s"_s, idc, u"b"_s) ? u'1' : u'0';
    EXPECT_EQ(sent, u"10000"_s);
    EXPECT_EQ(allRows(*s.clientes, "select idc, FaltaMail from clientes order by idc"),
              u"1|0\n2|-1\n3|0\n4|-1\n"_s);
}

TEST(MailHeader, IsPlainOrInEncodedWordsOfOneLineEach)
{
    EXPECT_EQ(headerValue(u"Hello"_s), "Hello");
    EXPECT_EQ(headerValue(u"a\r\nBcc: x@y.example\r\n\r\nbody"_s), "a Bcc: x@y.example body");
    const QByteArray isLong = headerValue(QString(200, u'ñ') + u"\U0001F415"_s);
    for (const QByteArray &line : isLong.split('\n'))
        EXPECT_LE(line.trimmed().size(), 75);
    EXPECT_EQ(addressWithName(u"x\" <evil@y.example>\r\nBcc: z"_s, u"a@b.example"_s).count('<'), 1);
    EXPECT_EQ(validAddresses(u"a@b.example;; c@d.example , a@b.example, x y@z, <q@r>, @, "
                             u"p@q\r\nRCPT TO:<m@n>"_s),
              (QStringList{u"a@b.example"_s, u"c@d.example"_s}));
    EXPECT_EQ(mailText(u"a=b \n\t\nñ"_s), "a=3Db=20\r\n=09\r\n=C3=B1\r\n");
    for (const QChar letter : {u'ñ', u'x', u'='})
        for (const QByteArray &line : mailText(QString(300, letter)).split('\n'))
            EXPECT_LE(line.trimmed().size(), 76);
    const QDateTime t(QDate(2026, 3, 11), QTime(9, 5), Qt::OffsetFromUTC, -3 * 3600);
    EXPECT_EQ(mailDate(t), "Wed, 11 Mar 2026 09:05:00 -0300");
}
