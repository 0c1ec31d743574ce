#include "messages/mail.h"
#include "messages/mail_account.h"
#include "messages/mail_message.h"
#include "store/settings_row.h"
#include "support/clinic.h"
#include "support/smtp_server.h"

#include <QElapsedTimer>

using namespace Qt::StringLiterals;

namespace
{

class Correo : public Clinica
{
protected:
    void Cuenta(const ServidorDeCorreo &servidor, Cifrado cifrado,
                const QString &contrasena = u"llave"_s)
    {
        ASSERT_TRUE(servidor.Vive());
        s.carpetaDePrograma = carpeta.path() + u'/';
        GuardarCuentaDeCorreo(
            s, {u"vet@clinic.example"_s, contrasena, u"localhost"_s, servidor.Puerto(), cifrado});
        GuardarAjusteDeMaquina(s, u"correo/autoridad"_s, servidor.Autoridad());
        GuardarAjusteDeMaquina(s, u"correo/segundos"_s, u"2"_s);
    }

    // A session without a password on a server that behaves as told.
    std::unique_ptr<SesionDeCorreo> Entrar(const ServidorDeCorreo &servidor)
    {
        Cuenta(servidor, Cifrado::Ninguno);
        QString error;
        auto correo = AbrirSesionCorreo(s, &error);
        EXPECT_TRUE(correo) << error.toStdString();
        return correo;
    }

    static QString Asuntos(const ServidorDeCorreo &servidor)
    {
        QStringList asuntos;
        for (const auto &c : servidor.Recibidos())
            asuntos << c.asunto;
        return asuntos.join(u' ');
    }

    const QStringList conClave{u"--user"_s, u"vet@clinic.example"_s, u"--password"_s, u"llave"_s};
};

} // namespace

TEST_F(Correo, ALineIsMadeSafeAndCarriesAWholeRun)
{
    s.clinica.nom = u"Clínica \"Ñandú\", S.A."_s;
    const QString asunto = u"Clínica Ñandú: ¡feliz cumpleaños para Toby y Öz!"_s;
    for (const Cifrado cifrado : {Cifrado::StartTls, Cifrado::Tls, Cifrado::Ninguno}) {
        QStringList opciones = conClave;
        if (cifrado != Cifrado::Ninguno)
            opciones << (cifrado == Cifrado::Tls ? u"--tls"_s : u"--starttls"_s);
        ServidorDeCorreo servidor(opciones);
        Cuenta(servidor, cifrado);
        QString error;
        auto correo = AbrirSesionCorreo(s, &error);
        ASSERT_TRUE(correo) << int(cifrado) << error.toStdString();
        EXPECT_EQ(Asuntos(servidor), QString()) << "signing on sends nothing";
        EXPECT_TRUE(correo->Enviar(asunto, u"a@x.example, b@x.example"_s,
                                   u"Estimada José:\r\n.\n<b> =20\rfin"_s))
            << correo->Error().toStdString();
        for (int i = 0; i < 3; ++i)
            EXPECT_TRUE(correo->Enviar(u"otro"_s, u"c@x.example"_s, u"2"_s));
        CerrarSesionCorreo(correo);

        const auto recibidos = servidor.Recibidos();
        ASSERT_EQ(recibidos.size(), 4);
        EXPECT_EQ(recibidos[0].asunto, asunto);
        EXPECT_EQ(recibidos[0].cuerpo, u"Estimada José:\n.\n<b> =20\nfin"_s);
        EXPECT_EQ(recibidos[0].de, u"vet@clinic.example"_s);
        EXPECT_EQ(recibidos[0].para, (QStringList{u"a@x.example"_s, u"b@x.example"_s}));
        for (const CorreoRecibido &c : recibidos) {
            EXPECT_EQ(c.seguro, cifrado != Cifrado::Ninguno);
            EXPECT_EQ(c.conexion, recibidos[0].conexion) << "one connection for the whole run";
        }
    }
}

TEST_F(Correo, ASessionThatCannotBeTrustedOrEnteredIsNone)
{
    ServidorDeCorreo servidor(conClave + QStringList{u"--starttls"_s});
    QString error;
    Cuenta(servidor, Cifrado::StartTls, u"otra"_s);
    EXPECT_FALSE(AbrirSesionCorreo(s, &error)) << "wrong password";
    EXPECT_FALSE(error.isEmpty());

    Cuenta(servidor, Cifrado::StartTls);
    GuardarAjusteDeMaquina(s, u"correo/autoridad"_s, {});
    EXPECT_FALSE(AbrirSesionCorreo(s, &error)) << "a certificate that nobody vouches for";
    EXPECT_TRUE(error.contains(u"certificate"_s)) << error.toStdString();

    ServidorDeCorreo abierto(conClave);
    Cuenta(abierto, Cifrado::StartTls);
    EXPECT_FALSE(AbrirSesionCorreo(s)) << "no safe line is offered: the password is not said";

    Cuenta(abierto, Cifrado::Ninguno);
    CuentaDeCorreo c = LeerCuentaDeCorreo(s);
    for (const QString &nombre : {u"local host"_s, u"localhost/x"_s, u"a@localhost"_s}) {
        c.servidor = nombre;
        GuardarServidorDeCorreo(s, c);
        EXPECT_FALSE(AbrirSesionCorreo(s)) << nombre.toStdString();
    }
    Cuenta(abierto, Cifrado::Ninguno);
    abierto.Parar();
    EXPECT_FALSE(AbrirSesionCorreo(s)) << "nobody there";

    GuardarAjuste(s, "passwordmail", Valor());
    ask.Espera(u"Can not log messaging"_s);
    EXPECT_FALSE(AbrirSesionCorreo(s));
}

TEST_F(Correo, OneMessageThatFailsEndsAlone)
{
    ServidorDeCorreo servidor(
        {u"--refuse"_s, u"no@x.example,nunca@x.example"_s, u"--drop-at"_s, u"3"_s});
    auto correo = Entrar(servidor);
    EXPECT_TRUE(correo->Enviar(u"1"_s, u"si@x.example"_s, u"1"_s));
    // Refused addresses are no reason to give the run up, however many follow one another.
    for (int i = 0; i < 4; ++i)
        EXPECT_FALSE(correo->Enviar(u"2"_s, u"no@x.example; nunca@x.example"_s, u"2"_s));
    EXPECT_TRUE(correo->Enviar(u"3"_s, u"no@x.example, si@x.example"_s, u"3"_s));
    EXPECT_TRUE(correo->Enviar(u"4"_s, u"si@x.example"_s, u"4"_s)) << "the line breaks here";
    EXPECT_NE(correo->Error(), QString());
    EXPECT_TRUE(correo->Enviar(u"5"_s, u"si@x.example"_s, u"5"_s)) << correo->Error().toStdString();
    EXPECT_FALSE(correo->Enviar(u"6"_s, u"sin arroba"_s, u"6"_s));
    EXPECT_EQ(Asuntos(servidor), u"1 3 5"_s);
}

TEST_F(Correo, AServerThatTakesAFewOnALineGetsTheRestOnAnother)
{
    ServidorDeCorreo servidor({u"--close-after"_s, u"2"_s});
    auto correo = Entrar(servidor);
    for (int i = 1; i <= 5; ++i)
        EXPECT_TRUE(correo->Enviar(QString::number(i), u"si@x.example"_s, u"x"_s))
            << i << correo->Error().toStdString();
    EXPECT_EQ(Asuntos(servidor), u"1 2 3 4 5"_s);
}

TEST_F(Correo, AServerThatFallsSilentIsNotWaitedForWithEveryMessage)
{
    QElapsedTimer reloj;
    reloj.start();
    ServidorDeCorreo mudo({u"--mute"_s});
    Cuenta(mudo, Cifrado::Ninguno);
    int vueltas = 0;
    EXPECT_FALSE(AbrirSesionCorreo(s, nullptr, [&vueltas] { ++vueltas; }));
    EXPECT_GT(vueltas, 0) << "whoever waits can repaint";

    ServidorDeCorreo servidor({u"--hang-at"_s, u"2"_s});
    auto correo = Entrar(servidor);
    EXPECT_TRUE(correo->Enviar(u"1"_s, u"si@x.example"_s, u"x"_s));
    // What it has whole and does not answer may have arrived: it counts as sent.
    int inciertos = 0;
    for (int i = 0; i < 30; ++i)
        inciertos += correo->Enviar(u"2"_s, u"si@x.example"_s, u"x"_s);
    EXPECT_EQ(inciertos, 2);
    EXPECT_TRUE(correo->Perdida());
    correo.reset();
    EXPECT_LT(reloj.elapsed(), 30000); // a few limits of two seconds, and not thirty
    EXPECT_EQ(Asuntos(servidor), u"1"_s);
}

TEST_F(Correo, WhatStandsInNamesAndTextsAddsNoHeaderAndNoRecipient)
{
    ServidorDeCorreo servidor;
    s.clinica.nom = u"El Ombú\r\nBcc: <evil@y.example>\r\n\r\nx"_s;
    auto correo = Entrar(servidor);
    EXPECT_TRUE(correo->Enviar(u"hi\r\nBcc: evil@y.example\n\nbody"_s,
                               u"a@x.example, b@x.example>\r\nRCPT TO:<evil@y.example"_s,
                               u"text\r\n.\r\nMAIL FROM:<evil@y.example>\r\n"_s));
    const auto recibidos = servidor.Recibidos();
    ASSERT_EQ(recibidos.size(), 1);
    EXPECT_EQ(recibidos[0].para, QStringList{u"a@x.example"_s});
    EXPECT_EQ(recibidos[0].asunto, u"hi Bcc: evil@y.example body"_s);
    QStringList cabeceras;
    for (const QString &linea : recibidos[0].crudo.section(u"\r\n\r\n"_s, 0, 0).split(u"\r\n"_s))
        if (!linea.startsWith(u' '))
            cabeceras << linea.section(u':', 0, 0);
    cabeceras.sort();
    EXPECT_EQ(cabeceras.join(u' ').toStdString(),
              "Auto-Submitted Content-Transfer-Encoding Content-Type Date From MIME-Version "
              "Message-ID Subject To");

    CuentaDeCorreo c = LeerCuentaDeCorreo(s);
    c.usuario = u"vet@clinic.example>\r\nDATA"_s;
    GuardarCuentaDeCorreo(s, c);
    EXPECT_FALSE(AbrirSesionCorreo(s)) << "nor does the sender";
}

TEST_F(Correo, AClientWithoutAnAddressIsMarked)
{
    ServidorDeCorreo servidor;
    for (int idc = 0; const Valor &email :
                      {Valor(u"a@x.example"_s), Valor(u"no at sign"_s), Valor(u"@"_s), Valor()})
        s.clientes->Execute("insert into clientes (idc, email) values (?, ?)", ++idc, email);
    auto correo = Entrar(servidor);
    QString enviados;
    for (int idc = 1; idc <= 5; ++idc)
        enviados += EnviarCorreo(s, *correo, u"s"_s, idc, u"b"_s) ? u'1' : u'0';
    EXPECT_EQ(enviados, u"10000"_s);
    EXPECT_EQ(Filas(*s.clientes, "select idc, FaltaMail from clientes order by idc"),
              u"1|0\n2|-1\n3|0\n4|-1\n"_s);
}

TEST(CabeceraDeCorreo, IsPlainOrInEncodedWordsOfOneLineEach)
{
    EXPECT_EQ(ValorDeCabecera(u"Hello"_s), "Hello");
    EXPECT_EQ(ValorDeCabecera(u"a\r\nBcc: x@y.example\r\n\r\nbody"_s), "a Bcc: x@y.example body");
    const QByteArray larga = ValorDeCabecera(QString(200, u'ñ') + u"\U0001F415"_s);
    for (const QByteArray &linea : larga.split('\n'))
        EXPECT_LE(linea.trimmed().size(), 75);
    EXPECT_EQ(DireccionConNombre(u"x\" <evil@y.example>\r\nBcc: z"_s, u"a@b.example"_s).count('<'),
              1);
    EXPECT_EQ(DireccionesValidas(u"a@b.example;; c@d.example , a@b.example, x y@z, <q@r>, @, "
                                 u"p@q\r\nRCPT TO:<m@n>"_s),
              (QStringList{u"a@b.example"_s, u"c@d.example"_s}));
    EXPECT_EQ(TextoDeCorreo(u"a=b \n\t\nñ"_s), "a=3Db=20\r\n=09\r\n=C3=B1\r\n");
    for (const QByteArray &linea : TextoDeCorreo(QString(300, u'ñ')).split('\n'))
        EXPECT_LE(linea.trimmed().size(), 76);
    const QDateTime t(QDate(2026, 3, 11), QTime(9, 5), Qt::OffsetFromUTC, -3 * 3600);
    EXPECT_EQ(FechaDeCorreo(t), "Wed, 11 Mar 2026 09:05:00 -0300");
}
