#include "messages/mail_account.h"

#include "support/clinic.h"

#include <QFile>

using namespace messages;
using namespace Qt::StringLiterals;

namespace
{

class Account : public Clinic
{
protected:
    Account() { s.programFolder = program.path() + u'/'; }
    QString saved()
    {
        return allRows(*s.morvane, "select usuariomail, passwordmail from configuracion");
    }
    QByteArray clinicSettings()
    {
        QFile f(folder.filePath(u"kelvara.ini"_s));
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
    }
    QTemporaryDir program;
};

} // namespace

TEST_F(Account, ComesBackWithItsPasswordInTheEncryptedDatabaseAlone)
{
    EXPECT_FALSE(readMailAccount(s).complete());
    EXPECT_EQ(readMailAccount(s).port, 587);

    saveMailAccount(
        s, {u"ana@example.com"_s, u"s3creto%=;"_s, u" smtp.example.com "_s, 2525, Encryption::Tls});
    reopen();
    const MailAccount c = readMailAccount(s);
    EXPECT_TRUE(c.complete());
    EXPECT_EQ(c.user, u"ana@example.com"_s);
    EXPECT_EQ(c.password, u"s3creto%=;"_s);
    EXPECT_EQ(c.server, u"smtp.example.com"_s);
    EXPECT_EQ(c.port, 2525);
    EXPECT_EQ(c.encryption, Encryption::Tls);

    ASSERT_TRUE(clinicSettings().contains("smtp.example.com"));
    EXPECT_FALSE(clinicSettings().contains("creto"));
    EXPECT_FALSE(clinicSettings().contains("ana@"));
    QFile base(folder.filePath(u"morvane.mdb"_s));
    ASSERT_TRUE(base.open(QIODevice::ReadOnly));
    EXPECT_FALSE(base.readAll().contains("s3creto"));
}

TEST_F(Account, WhatAnIniEditedByHandHoldsIsReadSafely)
{
    QFile f(folder.filePath(u"kelvara.ini"_s));
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write("[correo]\nservidor=s\npuerto=99999\ncifrado=nada\n");
    f.close();
    const MailAccount c = readMailAccount(s);
    EXPECT_EQ(c.server, u"s"_s);
    EXPECT_EQ(c.encryption, Encryption::StartTls) << "what cannot be read protects";
    EXPECT_EQ(c.port, 587);
}

TEST_F(Account, NameAndPasswordAreAskedForInTurnAndStoredTogether)
{
    const auto askUser = [this](std::optional<QString> user) {
        ask.expectText(u"User name of the mail account"_s, std::move(user));
    };
    askUser(u"ana"_s);
    ask.expectText(u"Password"_s, u"uno"_s);
    EXPECT_TRUE(modifyMailAccount(s));
    EXPECT_EQ(saved(), u"ana|uno\n"_s);

    askUser(u"  "_s);
    EXPECT_FALSE(modifyMailAccount(s));
    askUser(u"eva"_s);
    ask.expectText(u"Password"_s, std::nullopt);
    EXPECT_FALSE(modifyMailAccount(s));
    EXPECT_EQ(saved(), u"ana|uno\n"_s);

    // Each question is repeated while the answer does not fit.
    askUser(QString(s.morvane->widthOf("Configuracion", "usuariomail") + 1, u'x'));
    ask.wait(u"valid value"_s);
    askUser(u"eva"_s);
    ask.expectText(u"Password"_s, QString(51, u'x'));
    ask.wait(u"valid value"_s);
    ask.expectText(u"Password"_s, u""_s);
    EXPECT_TRUE(modifyMailAccount(s));
    EXPECT_EQ(saved(), u"eva|\n"_s);
    EXPECT_EQ(clinicSettings(), QByteArray()) << "the server is another matter";

    s.dataFolder = folder.filePath(u"morvane.mdb"_s) + u'/'; // a file, not a folder
    EXPECT_THROW(saveMailServer(s, {{}, {}, u"smtp"_s}), store::StoreError);
}
