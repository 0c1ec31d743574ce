#include "boarding/stay.h"
#include "support/clinic.h"

#include <QLocale>

using namespace Qt::StringLiterals;

class Hospedaje : public Clinica
{
protected:
    QString Estado(const QString &tip, int entra, int sale)
    {
        s.clientes->Execute("delete * from mhospedaje");
        s.clientes->Execute("insert into mhospedaje (idm, tip, fent, fsal) values (5, ?, ?, ?)",
                            tip, hoy.addDays(entra), hoy.addDays(sale));
        const EstadoDeHospedaje e = LeerHospedaje(s, 5);
        return EtiquetaDe(e.estancia) + u' ' + DibujoDe(e.estancia) + u' ' + e.texto;
    }
};

TEST_F(Hospedaje, AGuestCountsDaysLeftUntilItsLastDayAndDaysOverThen)
{
    EXPECT_EQ(Estado(u"h"_s, -2, 3), u"alt daralta There is/are 3 day/s of boarding left."_s);
    EXPECT_EQ(Estado(u"h"_s, -2, 0), u"alt daralta There is/are 0 day/s of boarding left."_s);
    EXPECT_EQ(Estado(u"h"_s, -5, -1),
              u"alt daralta Waiting to be discharged from boarding. Days over: 1"_s);
}

TEST_F(Hospedaje, AReservationTellsItsDaysAndAGuestCountsBeforeOne)
{
    const auto dia = [&](int n) {
        return QLocale().toString(hoy.addDays(n), QLocale::ShortFormat);
    };
    EXPECT_EQ(Estado(u"r"_s, 2, 5),
              u"res reserva Boarding reservation requested. "_s + dia(2) + u" to "_s + dia(5));
    s.clientes->Execute("insert into mhospedaje (idm, tip, fent, fsal) values (5, 'h', ?, ?)", hoy,
                        hoy.addDays(1));
    EXPECT_EQ(LeerHospedaje(s, 5).estancia, Estancia::DarAlta);
    const EstadoDeHospedaje nadie = LeerHospedaje(s, 6);
    EXPECT_EQ(EtiquetaDe(nadie.estancia) + DibujoDe(nadie.estancia) + nadie.texto,
              u"hoshospedar"_s);
}
