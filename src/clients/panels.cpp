#include "clients/panels.h"

#include "boarding/stay.h"
#include "clients/profiles.h"
#include "clinical/food.h"
#include "store/lookups.h"

#include <QLocale>

using namespace Qt::StringLiterals;

namespace
{

// How much of a consultation is shown.
constexpr qsizetype ComienzoDeConsulta = 120;

QString Deuda(const Sesion &s, const Recordset &r)
{
    QStringList lineas{s(9421) + u' ' + QLocale().toCurrencyString(r["saldo"].toMoneda().ADoble())};
    if (const QDate pago = r["fecultpago"].toDate(); pago.isValid())
        lineas << s(2275) + u' ' + TextoDeDia(pago) + u' '
                      + QString::number(pago.daysTo(s.reloj.hoy)) + u' ' + s(2276);
    const int avisos = r["men"].toInt();
    lineas << (avisos > 0 ? s(2277) + u' ' + QString::number(avisos) + u' ' + s(2278) : s(2279));
    return lineas.join(u'\n');
}

QStringList Turnos(Sesion &s, int idm)
{
    QStringList lineas;
    Recordset r = s.morvane->OpenSnapshot(
        "select tip, dia, hor, des from TareasAgenda where ida = ? and est = 0 and tip > 0 and "
        "dia >= DATE() order by dia, hor",
        idm);
    for (; !r.EOF_(); r.MoveNext()) {
        QStringList partes{LeerCampo(s, "finanzas", "articulos", r["tip"].toInt(), "nom"),
                           TextoDeDia(r["dia"].toDate())};
        if (const QTime hora = r["hor"].toTime(); hora.isValid())
            partes << QLocale().toString(hora, QLocale::ShortFormat);
        partes << r["des"].toText();
        partes.removeAll(QString());
        lineas << partes.join(u' ');
    }
    return lineas;
}

QString UltimaConsulta(Sesion &s, int idm)
{
    const Recordset r = s.clientes->OpenSnapshot(
        "select top 1 fec, cli from mclinica where idm = ? order by fec desc, idclinica desc", idm);
    if (r.EOF_())
        return {};
    // Consultations are long and have many lines.
    return QLocale().toString(r["fec"].toDate(), QLocale::LongFormat) + u' '
           + r["cli"].toText().simplified().left(ComienzoDeConsulta) + u" ....."_s;
}

} // namespace

QString InformacionDeCliente(Sesion &s, int idc)
{
    QStringList partes;
    if (const QDate fecu =
            s.clientes->Leer("select fecu from clientes where idc = ?", idc).toDate();
        fecu.isValid())
        partes << s(2273) + u' ' + TextoDeDia(fecu);
    Recordset deudas = s.finanzas->OpenSnapshot(
        "select saldo,fecultpago,men from ctactec where idc = ? and cancelado = 0", idc);
    for (; !deudas.EOF_(); deudas.MoveNext())
        partes << Deuda(s, deudas);
    if (s.configuracion["LeerPerfil"].toBool())
        partes << TextoPerfil(s, idc);
    partes.removeAll(QString());
    return partes.join(u"\n-----------------------------\n"_s);
}

QString InformacionDePaciente(Sesion &s, int idm)
{
    QStringList partes;
    if (s.clientes->Leer("select int from mascotas where idm = ?", idm).toBool())
        partes << s(9403);
    partes << Turnos(s, idm) << LeerHospedaje(s, idm).texto << UltimaConsulta(s, idm)
           << TextoDeAlimento(s, idm);
    partes.removeAll(QString());
    return partes.join(u'\n');
}

QString Edad(const Sesion &s, QDate nacimiento)
{
    const QDate hoy = s.reloj.hoy;
    if (!nacimiento.isValid() || nacimiento > hoy)
        return {};
    int meses = (hoy.year() - nacimiento.year()) * 12 + hoy.month() - nacimiento.month();
    if (nacimiento.addMonths(meses) > hoy)
        --meses;
    const auto contados = [&s](qint64 n, int uno, int varios) {
        return QString::number(n) + u' ' + s(n == 1 ? uno : varios);
    };
    if (meses == 0)
        return contados(nacimiento.daysTo(hoy), 9416, 9417);
    QStringList partes;
    if (meses >= 12)
        partes << contados(meses / 12, 9412, 9413);
    if (meses % 12)
        partes << contados(meses % 12, 9414, 9415);
    return partes.join(u' ');
}
