#include "clients/panels.h"

#include "boarding/stay.h"
#include "clients/profiles.h"
#include "clinical/food.h"
#include "columns/configuracion.h"
#include "store/lookups.h"
#include "texts/clients.h"
#include "texts/texts.h"

#include <QLocale>

using namespace clients;
using namespace Qt::StringLiterals;

namespace
{

// Characters of a consultation that are shown.
constexpr qsizetype ConsultationBeginning = 120;

QString Debt(const Sesion &s, const Recordset &r)
{
    QStringList lines{s(text::OutstandingBalance) + u' '
                      + QLocale().toCurrencyString(r["saldo"].toMoneda().toDouble())};
    if (const QDate payment = r["fecultpago"].toDate(); payment.isValid())
        lines << s(text::LastPayment) + u' ' + store::dayText(payment) + u' '
                     + QString::number(payment.daysTo(s.reloj.hoy)) + u' ' + s(text::DaysOfPayment);
    const int notices = r["men"].toInt();
    lines << (notices > 0 ? s(text::NoticesIssued) + u' ' + QString::number(notices) + u' '
                                + s(text::NoticesIssuedEnd)
                          : s(text::NoNoticesIssued));
    return lines.join(u'\n');
}

QStringList Appointments(Sesion &s, int idm)
{
    QStringList lines;
    Recordset r = s.morvane->OpenSnapshot(
        "select tip, dia, hor, des from TareasAgenda where ida = ? and est = 0 and tip > 0 and "
        "dia >= DATE() order by dia, hor",
        idm);
    for (; !r.EOF_(); r.MoveNext()) {
        QStringList parts{LeerCampo(s, "finanzas", "articulos", r["tip"].toInt(), "nom"),
                          store::dayText(r["dia"].toDate())};
        if (const QTime hour = r["hor"].toTime(); hour.isValid())
            parts << QLocale().toString(hour, QLocale::ShortFormat);
        parts << r["des"].toText();
        parts.removeAll(QString());
        lines << parts.join(u' ');
    }
    return lines;
}

QString lastQuery(Sesion &s, int idm)
{
    const Recordset r = s.clientes->OpenSnapshot(
        "select top 1 fec, cli from mclinica where idm = ? order by fec desc, idclinica desc", idm);
    if (r.EOF_())
        return {};
    // Consultations are long and span many lines.
    return QLocale().toString(r["fec"].toDate(), QLocale::LongFormat) + u' '
           + r["cli"].toText().simplified().left(ConsultationBeginning) + u" ....."_s;
}

} // namespace

QString clients::clientInformation(Sesion &s, int idc)
{
    QStringList parts;
    if (const QDate fecu =
            s.clientes->read("select fecu from clientes where idc = ?", idc).toDate();
        fecu.isValid())
        parts << s(text::LastVisitShort) + u' ' + store::dayText(fecu);
    Recordset debts = s.finanzas->OpenSnapshot(
        "select saldo,fecultpago,men from ctactec where idc = ? and cancelado = 0", idc);
    for (; !debts.EOF_(); debts.MoveNext())
        parts << Debt(s, debts);
    if (s.configuracion[setting::LeerPerfil].toBool())
        parts << TextoPerfil(s, idc);
    parts.removeAll(QString());
    return parts.join(u"\n-----------------------------\n"_s);
}

QString clients::patientInformation(Sesion &s, int idm)
{
    QStringList parts;
    if (s.clientes->read("select int from mascotas where idm = ?", idm).toBool())
        parts << s(text::CurrentlyInCare);
    parts << Appointments(s, idm) << boarding::readBoarding(s, idm).text << lastQuery(s, idm)
          << clinical::foodText(s, idm);
    parts.removeAll(QString());
    return parts.join(u'\n');
}

QString clients::ageOf(const Sesion &s, QDate birth)
{
    const QDate hoy = s.reloj.hoy;
    if (!birth.isValid() || birth > hoy)
        return {};
    int months = (hoy.year() - birth.year()) * 12 + hoy.month() - birth.month();
    if (birth.addMonths(months) > hoy)
        --months;
    const auto counted = [&s](qint64 n, int one, int several) {
        return QString::number(n) + u' ' + s(n == 1 ? one : several);
    };
    if (months == 0)
        return counted(birth.daysTo(hoy), text::OneDay, text::Days);
    QStringList parts;
    if (months >= 12)
        parts << counted(months / 12, text::OneYear, text::Years);
    if (months % 12)
        parts << counted(months % 12, text::OneMonth, text::Months);
    return parts.join(u' ');
}
