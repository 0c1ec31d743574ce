#include "messages/mail_account.h"

#include "support/clinic.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace
{

class Cuenta : public Clinica
{
protected:
    Cuenta() { s.carpetaDePrograma = programa.path() + u'/'; }
    QString guardada()
    {
        return Filas(*s.morvane, "select usuariomail, passwordmail from configuracion");
    }
    QByteArray ajustesDeLaClinica()
    {
        QFile f(carpeta.filePath(u"kelvara.ini"_s));
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
    }
    QTemporaryDir programa;
};

} // namespace

TEST_F(Cuenta, ComesBackWithItsPasswordInTheEncryptedDatabaseAlone)
{
    EXPECT_FALSE(LeerCuentaDeCorreo(s).Completa());
    EXPECT_EQ(LeerCuentaDeCorreo(s).puerto, 587);

    GuardarCuentaDeCorreo(
        s, {u"ana@example.com"_s, u"s3creto%=;"_s, u" smtp.example.com "_s, 2525, Cifrado::Tls});
    Reabrir();
    const CuentaDeCorreo c = LeerCuentaDeCorreo(s);
    EXPECT_TRUE(c.Completa());
    EXPECT_EQ(c.usuario, u"ana@example.com"_s);
    EXPECT_EQ(c.contrasena, u"s3creto%=;"_s);
    EXPECT_EQ(c.servidor, u"smtp.example.com"_s);
    EXPECT_EQ(c.puerto, 2525);
    EXPECT_EQ(c.cifrado, Cifrado::Tls);

    ASSERT_TRUE(ajustesDeLaClinica().contains("smtp.example.com"));
    EXPECT_FALSE(ajustesDeLaClinica().contains("creto"));
    EXPECT_FALSE(ajustesDeLaClinica().contains("ana@"));
    QFile base(carpeta.filePath(u"morvane.mdb"_s));
    ASSERT_TRUE(base.open(QIODevice::ReadOnly));
    EXPECT_FALSE(base.readAll().contains("s3creto"));
}

TEST_F(Cuenta, WhatAnIniEditedByHandHoldsIsReadSafely)
{
    QFile f(carpeta.filePath(u"kelvara.ini"_s));
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write("[correo]\nservidor=s\npuerto=99999\ncifrado=nada\n");
    f.close();
    const CuentaDeCorreo c = LeerCuentaDeCorreo(s);
    EXPECT_EQ(c.servidor, u"s"_s);
    EXPECT_EQ(c.cifrado, Cifrado::StartTls) << "what cannot be read protects";
    EXPECT_EQ(c.puerto, 587);
}

TEST_F(Cuenta, NameAndPasswordAreAskedForInTurnAndStoredTogether)
{
    const auto pedir = [this](std::optional<QString> usuario) {
        ask.EsperaTexto(u"User name of the mail account"_s, std::move(usuario));
    };
    pedir(u"ana"_s);
    ask.EsperaTexto(u"Password"_s, u"uno"_s);
    EXPECT_TRUE(ModificarCuentaDeCorreo(s));
    EXPECT_EQ(guardada(), u"ana|uno\n"_s);

    pedir(u"  "_s);
    EXPECT_FALSE(ModificarCuentaDeCorreo(s));
    pedir(u"eva"_s);
    ask.EsperaTexto(u"Password"_s, std::nullopt);
    EXPECT_FALSE(ModificarCuentaDeCorreo(s));
    EXPECT_EQ(guardada(), u"ana|uno\n"_s);

    // Each is asked for again while it does not fit, before the next one.
    pedir(QString(s.morvane->Ancho("Configuracion", "usuariomail") + 1, u'x'));
    ask.Espera(u"valid value"_s);
    pedir(u"eva"_s);
    ask.EsperaTexto(u"Password"_s, QString(51, u'x'));
    ask.Espera(u"valid value"_s);
    ask.EsperaTexto(u"Password"_s, u""_s);
    EXPECT_TRUE(ModificarCuentaDeCorreo(s));
    EXPECT_EQ(guardada(), u"eva|\n"_s);
    EXPECT_EQ(ajustesDeLaClinica(), QByteArray()) << "the server is another matter";

    s.carpetaDeDatos = carpeta.filePath(u"morvane.mdb"_s) + u'/'; // no folder
    EXPECT_THROW(GuardarServidorDeCorreo(s, {{}, {}, u"smtp"_s}), ErrorDeAlmacen);
}
