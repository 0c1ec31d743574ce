#include "messages/planned_notices.h"

#include "agenda/tasks.h"
#include "clinical/doses.h"
#include "columns/configuracion.h"
#include "contact/contact.h"
#include "messages/templates.h"
#include "store/lookups.h"

using namespace messages;
using namespace Qt::StringLiterals;

std::vector<PlannedNotice> messages::noticesOf(Sesion &s, NoticesGroup group)
{
    const bool withService =
        group == NoticesGroup::MissedWithService || group == NoticesGroup::TodayWithService;
    const bool missed =
        group == NoticesGroup::MissedWithoutService || group == NoticesGroup::MissedWithService;
    QDate from = s.configuracion[setting::FechaInicioAnterior].toDate();
    if (!from.isValid())
        from = s.reloj.hoy.addDays(-1);
    const QDate first = missed ? from : from.addDays(1);
    const QDate last = missed ? s.reloj.hoy.addDays(-1) : s.reloj.hoy;

    std::vector<PlannedNotice> notices;
    if (first > last)
        return notices; // BETWEEN also accepts swapped bounds and would find tomorrow's doses
    Recordset r = s.clientes->OpenSnapshot(
        std::string("select ArtPlan.idm, ArtPlan.ida, ArtPlan.dos, ArtPlan.IdCat, ArtPlan.rep, "
                    "mascotas.nom, mascotas.idc from ArtPlan inner join mascotas on mascotas.idm = "
                    "ArtPlan.idm where ArtPlan.rep between ? and ? and ")
            + clinical::OpenDoses + " and mascotas.dec = 0 and mascotas.ser "
            + (withService ? "> 0" : "= 0") + " order by mascotas.nom, ArtPlan.rep",
        first, last);
    for (; !r.EOF_(); r.MoveNext()) {
        PlannedNotice a;
        a.idm = r[0].toInt();
        a.ida = r[1].toInt();
        a.expires = r[4].toDate();
        a.patient = r[5].toText();
        a.idc = r[6].toInt();
        // The day and not the ordinal, which another dose may have tomorrow.
        a.key = u"%1-%2-%3-%4"_s.arg(a.idm)
                    .arg(a.ida)
                    .arg(r[3].toInt())
                    .arg(a.expires.toString(u"yyyyMMdd"));
        a.owner = LeerCampo(s, "clientes", "clientes", a.idc, "ayn");
        a.product = LeerCampo(s, "finanzas", "articulos", a.ida, "nom");
        a.telephones = TelefonosCliente(s, a.idc);
        a.note =
            s.clientes->read("select Texto from AvisosPlanificadas where ID = ?", a.key).toText();
        notices.push_back(std::move(a));
    }
    return notices;
}

QString messages::noticeText(Sesion &s, const PlannedNotice &notice)
{
    return ComponerMensaje(s, agenda::TaskKind::DoseReminder, notice.idc, notice.idm, notice.ida,
                           1);
}

void messages::saveNote(Sesion &s, const QString &key, const QString &text)
{
    Lote lote(s);
    s.clientes->Execute("delete * from AvisosPlanificadas where ID = ?", key);
    if (!text.trimmed().isEmpty())
        s.clientes->Execute("insert into AvisosPlanificadas (ID, Texto) values (?, ?)", key, text);
    lote.commit();
}
