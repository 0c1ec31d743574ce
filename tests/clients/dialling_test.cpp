#include "clients/dialling.h"
#include "clients/frmtel.h"
#include "support/clinic.h"

#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <fcntl.h>
#include <stdlib.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace
{

/// The other end of a pseudo-terminal.
struct Modem {
    Modem()
    {
        EXPECT_TRUE(extremo >= 0 && grantpt(extremo) == 0 && unlockpt(extremo) == 0);
        puerto = QString::fromLocal8Bit(ptsname(extremo));
    }
    ~Modem() { Desenchufar(); }
    void Desenchufar()
    {
        if (extremo >= 0)
            ::close(std::exchange(extremo, -1));
    }
    void Contesta(const QByteArray &texto)
    {
        EXPECT_EQ(::write(extremo, texto.constData(), size_t(texto.size())), texto.size());
    }
    /// The command that it is told.
    QByteArray Orden()
    {
        QByteArray oido;
        EXPECT_TRUE(QTest::qWaitFor([&] {
            char tramo[256];
            for (ssize_t n; (n = ::read(extremo, tramo, sizeof tramo)) > 0;)
                oido.append(tramo, n);
            return oido.endsWith('\r');
        }));
        return oido;
    }

    int extremo = posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK);
    QString puerto;
};

class Marcado : public testing::Test
{
protected:
    Marcado()
    {
        QObject::connect(&marcador, &Marcador::marcado, [this] { sucesos << u"OK"_s; });
        QObject::connect(&marcador, &Marcador::fallado,
                         [this](const QString &motivo) { sucesos << u"falla:"_s + motivo; });
    }
    QString Suceso()
    {
        EXPECT_TRUE(QTest::qWaitFor([this] { return !sucesos.isEmpty(); }));
        return std::exchange(sucesos, {}).join(u' ');
    }
    bool NadaSucede()
    {
        QTest::qWait(100);
        return sucesos.isEmpty();
    }

    Modem modem;
    QStringList sucesos;
    Marcador marcador;
};

} // namespace

TEST_F(Marcado, DialsTheNumberAndHangsUpWhenTold)
{
    ASSERT_TRUE(marcador.Llamar(modem.puerto, u"+598 99-123\r456"_s));
    EXPECT_EQ(modem.Orden(), "ATDT+59899123456;\r");
    modem.Contesta("ATDT+59899123456;\r\r\nO"); // the echo, and an answer in two pieces
    EXPECT_TRUE(NadaSucede());
    modem.Contesta("K\r\n");
    EXPECT_EQ(Suceso(), u"OK"_s);
    EXPECT_TRUE(marcador.Abierto());

    // The same call once more, on the open port.
    ASSERT_TRUE(marcador.Llamar(modem.puerto, u"123"_s));
    EXPECT_EQ(modem.Orden(), "ATDT123;\r");
    marcador.Terminar();
    EXPECT_FALSE(marcador.Abierto());
    EXPECT_EQ(modem.Orden(), "ATH\r");
    modem.Contesta("OK\r\n"); // to nobody
    EXPECT_TRUE(NadaSucede());
}

TEST_F(Marcado, TellsWhatTheModemRefuses)
{
    for (const char *respuesta : {"BUSY", "NO DIALTONE", "NO CARRIER", "ERROR"}) {
        ASSERT_TRUE(marcador.Llamar(modem.puerto, u"123"_s));
        modem.Orden();
        modem.Contesta("\r\n" + QByteArray(respuesta) + "\r\n");
        EXPECT_EQ(Suceso(), u"falla:"_s + QString::fromLatin1(respuesta));
    }
}

TEST_F(Marcado, AModemThatStaysSilentIsGivenUp)
{
    marcador.FijarEspera(std::chrono::milliseconds(50));
    ASSERT_TRUE(marcador.Llamar(modem.puerto, u"123"_s));
    EXPECT_EQ(Suceso(), u"falla:"_s);
    modem.Contesta("OK\r\n"); // too late
    EXPECT_TRUE(NadaSucede());
}

TEST_F(Marcado, AModemThatIsPulledOutFails)
{
    ASSERT_TRUE(marcador.Llamar(modem.puerto, u"123"_s));
    modem.Orden();
    modem.Desenchufar();
    EXPECT_TRUE(Suceso().startsWith(u"falla:"));
    EXPECT_FALSE(marcador.Abierto());
    EXPECT_FALSE(marcador.Error().isEmpty());
}

TEST_F(Marcado, APortThatIsNotThereOrANumberWithoutDigitsIsRefused)
{
    EXPECT_FALSE(marcador.Llamar(u"/dev/no-such-port"_s, u"123"_s));
    EXPECT_FALSE(marcador.Error().isEmpty());
    EXPECT_FALSE(marcador.Llamar(modem.puerto, u"-"_s));
    EXPECT_FALSE(marcador.Abierto());
    EXPECT_TRUE(sucesos.isEmpty());
}

TEST(NumeroParaMarcar, TakesTheFirstNumberOfTheBox)
{
    EXPECT_EQ(NumeroParaMarcar(u"(0341) 422-555, 155"_s), u"0341422555"_s);
    EXPECT_EQ(NumeroParaMarcar(u"+54 9+1"_s), u"+5491"_s);
    EXPECT_EQ(NumeroParaMarcar(u"pedir, 155"_s), u"155"_s);
    EXPECT_EQ(NumeroParaMarcar(u"no tiene +"_s), QString());
}

TEST_F(Clinica, FrmTelDialsAndHangsUpWhenItIsClosed)
{
    Modem modem;
    frmTel form(s);
    const auto dial = [&](const QString &port) {
        form.findChild<QComboBox *>(u"cmbPuerto"_s)->setEditText(port);
        form.findChild<QPushButton *>(u"cmdLlamar"_s)->click();
        return form.findChild<QLabel *>(u"lblEstado"_s)->text();
    };
    form.opened({{u"numeros"_s, QStringList{u"5551234"_s}}});
    form.show();
    EXPECT_TRUE(dial(u"/dev/nowhere"_s).startsWith(s(9541)));
    EXPECT_EQ(dial(modem.puerto), s(4405) + u"5551234"_s);
    EXPECT_EQ(modem.Orden(), "ATDT5551234;\r");
    modem.Contesta("\r\nOK\r\n");
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return form.findChild<QLabel *>(u"lblEstado"_s)->text() == s(9540); }));
    form.findChild<QPushButton *>(u"cmdTerminar"_s)->click();
    EXPECT_EQ(modem.Orden(), "ATH\r");

    // The port is remembered: the next call begins by itself.
    form.close();
    form.opened({{u"numeros"_s, QStringList{u"777"_s}}});
    form.show();
    EXPECT_EQ(modem.Orden(), "ATDT777;\r");
    form.close();
    EXPECT_EQ(modem.Orden(), "ATH\r");
}
