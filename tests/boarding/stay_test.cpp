#include "boarding/stay.h"
#include "support/clinic.h"

#include <QLocale>

using namespace boarding;
using namespace Qt::StringLiterals;

class Boarding : public Clinic
{
protected:
    QString stateOf(const QString &tip, int enters, int sale)
    {
        s.clientes->Execute("delete * from mhospedaje");
        s.clientes->Execute("insert into mhospedaje (idm, tip, fent, fsal) values (5, ?, ?, ?)",
                            tip, hoy.addDays(enters), hoy.addDays(sale));
        const BoardingState e = readBoarding(s, 5);
        return labelOf(e.stay) + u' ' + pictureOf(e.stay) + u' ' + e.text;
    }
};

TEST_F(Boarding, AGuestCountsDaysLeftUntilItsLastDayAndDaysOverThen)
{
    EXPECT_EQ(stateOf(u"h"_s, -2, 3), u"alt daralta There is/are 3 day/s of boarding left."_s);
    EXPECT_EQ(stateOf(u"h"_s, -2, 0), u"alt daralta There is/are 0 day/s of boarding left."_s);
    EXPECT_EQ(stateOf(u"h"_s, -5, -1),
              u"alt daralta Waiting to be discharged from boarding. Days over: 1"_s);
}

TEST_F(Boarding, AReservationTellsItsDaysAndAGuestCountsBeforeOne)
{
    const auto dia = [&](int n) {
        return QLocale().toString(hoy.addDays(n), QLocale::ShortFormat);
    };
    EXPECT_EQ(stateOf(u"r"_s, 2, 5),
              u"res reserva Boarding reservation requested. "_s + dia(2) + u" to "_s + dia(5));
    s.clientes->Execute("insert into mhospedaje (idm, tip, fent, fsal) values (5, 'h', ?, ?)", hoy,
                        hoy.addDays(1));
    EXPECT_EQ(readBoarding(s, 5).stay, Stay::Discharge);
    const BoardingState nobody = readBoarding(s, 6);
    EXPECT_EQ(labelOf(nobody.stay) + pictureOf(nobody.stay) + nobody.text, u"hoshospedar"_s);
}
