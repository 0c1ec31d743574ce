#include "boarding/stay.h"

#include "texts/clients.h"

#include <QLocale>

using namespace boarding;
using namespace Qt::StringLiterals;

BoardingState boarding::readBoarding(Sesion &s, int idm)
{
    // Sorting by type puts a stay ("h") before a reservation ("r").
    const Recordset r = s.clientes->OpenSnapshot(
        "select tip, fent, fsal from mhospedaje where idm = ? order by tip, fent", idm);
    if (r.EOF_())
        return {};
    const QDate entry = r["fent"].toDate(), exit = r["fsal"].toDate();
    if (r["tip"].toText() != u"h")
        return {Stay::Reservation,
                s(text::ReservationRequested) + QLocale().toString(entry, QLocale::ShortFormat)
                    + s(text::ReservationUntil) + QLocale().toString(exit, QLocale::ShortFormat)};
    const qint64 days = s.reloj.hoy.daysTo(exit);
    return {Stay::Discharge, days >= 0 ? s(text::BoardingDaysLeft) + QString::number(days)
                                             + s(text::BoardingDaysLeftEnd)
                                       : s(text::BoardingDaysOver) + QString::number(-days)};
}

QString boarding::labelOf(Stay stay)
{
    switch (stay) {
    case Stay::Discharge:
        return u"alt"_s;
    case Stay::Reservation:
        return u"res"_s;
    case Stay::Board:
        break;
    }
    return u"hos"_s;
}

QString boarding::pictureOf(Stay stay)
{
    switch (stay) {
    case Stay::Discharge:
        return u"daralta"_s;
    case Stay::Reservation:
        return u"reserva"_s;
    case Stay::Board:
        break;
    }
    return u"hospedar"_s;
}
