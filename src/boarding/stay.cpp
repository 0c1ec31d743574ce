#include "boarding/stay.h"

#include <QLocale>

using namespace Qt::StringLiterals;

EstadoDeHospedaje LeerHospedaje(Sesion &s, int idm)
{
    // A guest counts before a reservation.
    const Recordset r = s.clientes->OpenSnapshot(
        "select tip, fent, fsal from mhospedaje where idm = ? order by tip, fent", idm);
    if (r.EOF_())
        return {};
    const QDate entrada = r["fent"].toDate(), salida = r["fsal"].toDate();
    if (r["tip"].toText() != u"h")
        return {Estancia::Reserva, s(9407) + QLocale().toString(entrada, QLocale::ShortFormat)
                                       + s(9408)
                                       + QLocale().toString(salida, QLocale::ShortFormat)};
    const qint64 dias = s.reloj.hoy.daysTo(salida);
    return {Estancia::DarAlta, dias >= 0 ? s(9404) + QString::number(dias) + s(9405)
                                         : s(9406) + QString::number(-dias)};
}

QString EtiquetaDe(Estancia estancia)
{
    switch (estancia) {
    case Estancia::DarAlta:
        return u"alt"_s;
    case Estancia::Reserva:
        return u"res"_s;
    case Estancia::Hospedar:
        break;
    }
    return u"hos"_s;
}

QString DibujoDe(Estancia estancia)
{
    switch (estancia) {
    case Estancia::DarAlta:
        return u"daralta"_s;
    case Estancia::Reserva:
        return u"reserva"_s;
    case Estancia::Hospedar:
        break;
    }
    return u"hospedar"_s;
}
