#include "clients/dialling.h"
#include "support/clinic.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <fcntl.h>
#include <stdlib.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace
{

// A modem at the other end of a pseudo-terminal.
class Marcado : public testing::Test
{
protected:
    Marcado()
    {
        modem = posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK);
        EXPECT_TRUE(modem >= 0 && grantpt(modem) == 0 && unlockpt(modem) == 0);
        puerto = QString::fromLocal8Bit(ptsname(modem));
        QObject::connect(&marcador, &Marcador::marcado, [this] { sucesos << u"OK"_s; });
        QObject::connect(&marcador, &Marcador::fallado,
                         [this](const QString &motivo) { sucesos << u"falla:"_s + motivo; });
    }
    ~Marcado() override { Colgar(); }

    void Colgar()
    {
        if (modem >= 0)
            ::close(modem);
        modem = -1;
    }
    void Contesta(const char *texto)
    {
        EXPECT_EQ(::write(modem, texto, strlen(texto)), ssize_t(strlen(texto)));
    }
    /// What the modem has been told, once it holds @p hasta.
    QByteArray Oido(const QByteArray &hasta)
    {
        QByteArray oido;
        Hasta([&] {
            char tramo[256];
            for (ssize_t n; (n = ::read(modem, tramo, sizeof tramo)) > 0;)
                oido.append(tramo, n);
            return oido.contains(hasta);
        });
        return oido;
    }
    template <typename F>
    bool Hasta(F listo, int milisegundos = 5000)
    {
        for (QDeadlineTimer plazo(milisegundos); !listo();) {
            if (plazo.hasExpired())
                return false;
            QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        }
        return true;
    }
    bool Sucede()
    {
        return Hasta([this] { return !sucesos.isEmpty(); });
    }

    int modem = -1;
    QString puerto;
    QStringList sucesos;
    Marcador marcador;
};

} // namespace

TEST_F(Marcado, DialsTheNumberAndHangsUpWhenTold)
{
    ASSERT_TRUE(marcador.Llamar(puerto, u"+598 99-123\r456"_s)) << qPrintable(marcador.Error());
    EXPECT_EQ(Oido("\r"), "ATDT+59899123456;\r");
    Contesta("ATDT+59899123456;\r\r\nO"); // the echo, and an answer in two pieces
    EXPECT_FALSE(Hasta([this] { return !sucesos.isEmpty(); }, 100));
    Contesta("K\r\n");
    EXPECT_TRUE(Sucede());
    EXPECT_TRUE(marcador.Abierto());

    // The same call once more, on the open port.
    ASSERT_TRUE(marcador.Llamar(puerto, u"123"_s));
    EXPECT_EQ(Oido("\r"), "ATDT123;\r");
    marcador.Terminar();
    EXPECT_FALSE(marcador.Abierto());
    EXPECT_EQ(Oido("\r"), "ATH\r");
    Contesta("OK\r\n"); // to nobody
    EXPECT_FALSE(Hasta([this] { return sucesos.size() > 1; }, 100));
    EXPECT_EQ(sucesos.join(u' '), u"OK"_s);
}

TEST_F(Marcado, TellsWhatTheModemRefuses)
{
    for (const char *respuesta : {"BUSY", "NO DIALTONE", "NO CARRIER", "ERROR"}) {
        sucesos.clear();
        ASSERT_TRUE(marcador.Llamar(puerto, u"123"_s));
        Oido("\r");
        Contesta("\r\n");
        Contesta(respuesta);
        Contesta("\r\n");
        EXPECT_TRUE(Sucede());
        EXPECT_EQ(sucesos.join(u' '), u"falla:"_s + QString::fromLatin1(respuesta));
    }
}

TEST_F(Marcado, AModemThatStaysSilentIsGivenUp)
{
    marcador.FijarEspera(std::chrono::milliseconds(50));
    ASSERT_TRUE(marcador.Llamar(puerto, u"123"_s));
    EXPECT_TRUE(Sucede());
    Contesta("OK\r\n"); // too late
    EXPECT_FALSE(Hasta([this] { return sucesos.size() > 1; }, 100));
    EXPECT_EQ(sucesos.join(u' '), u"falla:"_s);
}

TEST_F(Marcado, AModemThatIsPulledOutFails)
{
    ASSERT_TRUE(marcador.Llamar(puerto, u"123"_s));
    Oido("\r");
    Colgar();
    EXPECT_TRUE(Sucede());
    EXPECT_FALSE(marcador.Abierto());
    EXPECT_FALSE(marcador.Error().isEmpty());
}

TEST_F(Marcado, APortThatIsNotThereOrANumberWithoutDigitsIsRefused)
{
    EXPECT_FALSE(marcador.Llamar(u"/dev/no-such-port"_s, u"123"_s));
    EXPECT_FALSE(marcador.Error().isEmpty());
    EXPECT_FALSE(marcador.Llamar(puerto, u"-"_s));
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
