#include "clients/dialling.h"
#include "clients/frmtel.h"
#include "support/clinic.h"
#include "texts/clients.h"
#include "texts/texts.h"

#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <fcntl.h>
#include <stdlib.h>
#include <unistd.h>

using namespace clients;
using namespace Qt::StringLiterals;

namespace
{

/// The other end of a pseudo-terminal.
struct Modem {
    Modem()
    {
        EXPECT_TRUE(end >= 0 && grantpt(end) == 0 && unlockpt(end) == 0);
        port = QString::fromLocal8Bit(ptsname(end));
    }
    ~Modem() { unplug(); }
    void unplug()
    {
        if (end >= 0)
            ::close(std::exchange(end, -1));
    }
    void answers(const QByteArray &text)
    {
        EXPECT_EQ(::write(end, text.constData(), size_t(text.size())), text.size());
    }
    /// The command it received.
    QByteArray orderOf()
    {
        QByteArray ear;
        EXPECT_TRUE(QTest::qWaitFor([&] {
            char section[256];
            for (ssize_t n; (n = ::read(end, section, sizeof section)) > 0;)
                ear.append(section, n);
            return ear.endsWith('\r');
        }));
        return ear;
    }

    int end = posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK);
    QString port;
};

class Marked : public testing::Test
{
protected:
    Marked()
    {
        QObject::connect(&dialler, &Dialler::marked, [this] { events << u"OK"_s; });
        QObject::connect(&dialler, &Dialler::failed,
                         [this](const QString &reason) { events << u"falla:"_s + reason; });
    }
    QString event()
    {
        EXPECT_TRUE(QTest::qWaitFor([this] { return !events.isEmpty(); }));
        return std::exchange(events, {}).join(u' ');
    }
    bool nothingHappens()
    {
        QTest::qWait(100);
        return events.isEmpty();
    }

    Modem modem;
    QStringList events;
    Dialler dialler;
};

} // namespace

TEST_F(Marked, DialsTheNumberAndHangsUpWhenTold)
{
    ASSERT_TRUE(dialler.call(modem.port, u"+598 99-123\r456"_s));
    EXPECT_EQ(modem.orderOf(), "ATDT+59899123456;\r");
    modem.answers("ATDT+59899123456;\r\r\nO"); // the echo, then an answer in two pieces
    EXPECT_TRUE(nothingHappens());
    modem.answers("K\r\n");
    EXPECT_EQ(event(), u"OK"_s);
    EXPECT_TRUE(dialler.isOpen());

    // A second call on the port that is still open.
    ASSERT_TRUE(dialler.call(modem.port, u"123"_s));
    EXPECT_EQ(modem.orderOf(), "ATDT123;\r");
    dialler.finish();
    EXPECT_FALSE(dialler.isOpen());
    EXPECT_EQ(modem.orderOf(), "ATH\r");
    modem.answers("OK\r\n"); // no call is waiting for it
    EXPECT_TRUE(nothingHappens());
}

TEST_F(Marked, TellsWhatTheModemRefuses)
{
    for (const char *answer : {"BUSY", "NO DIALTONE", "NO CARRIER", "ERROR"}) {
        ASSERT_TRUE(dialler.call(modem.port, u"123"_s));
        modem.orderOf();
        modem.answers("\r\n" + QByteArray(answer) + "\r\n");
        EXPECT_EQ(event(), u"falla:"_s + QString::fromLatin1(answer));
    }
}

TEST_F(Marked, AModemThatStaysSilentIsGivenUp)
{
    dialler.setWait(std::chrono::milliseconds(50));
    ASSERT_TRUE(dialler.call(modem.port, u"123"_s));
    EXPECT_EQ(event(), u"falla:"_s);
    modem.answers("OK\r\n"); // too late
    EXPECT_TRUE(nothingHappens());
}

TEST_F(Marked, AModemThatIsPulledOutFails)
{
    ASSERT_TRUE(dialler.call(modem.port, u"123"_s));
    modem.orderOf();
    modem.unplug();
    EXPECT_TRUE(event().startsWith(u"falla:"));
    EXPECT_FALSE(dialler.isOpen());
    EXPECT_FALSE(dialler.error().isEmpty());
}

TEST_F(Marked, APortThatIsNotThereOrANumberWithoutDigitsIsRefused)
{
    EXPECT_FALSE(dialler.call(u"/dev/no-such-port"_s, u"123"_s));
    EXPECT_FALSE(dialler.error().isEmpty());
    EXPECT_FALSE(dialler.call(modem.port, u"-"_s));
    EXPECT_FALSE(dialler.isOpen());
    EXPECT_TRUE(events.isEmpty());
}

TEST(NumberToDial, TakesTheFirstNumberOfTheBox)
{
    EXPECT_EQ(NumberToDial(u"(0341) 422-555, 155"_s), u"0341422555"_s);
    EXPECT_EQ(NumberToDial(u"+54 9+1"_s), u"+5491"_s);
    EXPECT_EQ(NumberToDial(u"pedir, 155"_s), u"155"_s);
    EXPECT_EQ(NumberToDial(u"no tiene +"_s), QString());
}

TEST_F(Clinic, FrmTelDialsAndHangsUpWhenItIsClosed)
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
    EXPECT_TRUE(dial(u"/dev/nowhere"_s).startsWith(s(text::CallFailed)));
    EXPECT_EQ(dial(modem.port), s(text::DiallingTitle) + u"5551234"_s);
    EXPECT_EQ(modem.orderOf(), "ATDT5551234;\r");
    modem.answers("\r\nOK\r\n");
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return form.findChild<QLabel *>(u"lblEstado"_s)->text() == s(text::CallDialled); }));
    form.findChild<QPushButton *>(u"cmdTerminar"_s)->click();
    EXPECT_EQ(modem.orderOf(), "ATH\r");

    // The port is remembered, so the next call starts by itself.
    form.close();
    form.opened({{u"numeros"_s, QStringList{u"777"_s}}});
    form.show();
    EXPECT_EQ(modem.orderOf(), "ATDT777;\r");
    form.close();
    EXPECT_EQ(modem.orderOf(), "ATH\r");
}
