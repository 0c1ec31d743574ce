#include "messages/outbox_list.h"

#include "agenda/task_texts.h"
#include "agenda/tasks.h"
#include "contact/contact.h"
#include "messages/outbox.h"
#include "messages/templates.h"
#include "store/lookups.h"
#include "texts/agenda.h"
#include "texts/texts.h"

using namespace messages;
using namespace Qt::StringLiterals;

namespace
{

// The outbox has its own wording for some kinds.
QString reasonInOutbox(const Sesion &s, int tip)
{
    switch (tip) {
    case agenda::TaskKind::DoseReminder:
        return s(text::DiscontinuedReminder);
    case agenda::TaskKind::SettleArrears:
        return s(text::SettleArrears);
    case agenda::TaskKind::Restock:
        return s(text::RestockClinic);
    case agenda::TaskKind::AppointmentReminder:
        return s(text::WebAppointmentAnswer);
    default:
        return agenda::taskReason(s, tip);
    }
}

QString iconInOutbox(int tip)
{
    switch (tip) {
    case agenda::TaskKind::FoodShortage:
        return u"AgendaCom"_s;
    case agenda::TaskKind::DoseReminder:
        return u"AgendaVac"_s;
    case agenda::TaskKind::DebtReminder:
        return u"CtaCteChico"_s;
    default:
        return {};
    }
}

QString addresseeName(Sesion &s, int tip, int ida)
{
    if (agenda::taskSubject(tip) == agenda::Subject::Supplier)
        return LeerCampo(s, "finanzas", "proveedores", ida, "nom");
    return LeerCampo(s, "clientes", "clientes", taskAddressee(s, tip, ida), "ayn");
}

} // namespace

std::vector<DayMessage> messages::dayMessages(Sesion &s)
{
    std::vector<DayMessage> messages;
    Recordset r = s.morvane->OpenSnapshot(
        "select * from TareasAgenda where (dia = date() and (tip = ?)) or (fcreacion = date() "
        "and (tip < 0 and tip <> ?)) order by id",
        agenda::TaskKind::AppointmentReminder, agenda::TaskKind::Ration);
    for (; !r.EOF_(); r.MoveNext()) {
        DayMessage m;
        m.id = r["id"].toInt();
        m.tip = r["tip"].toInt();
        if (agenda::taskSubject(m.tip) == agenda::Subject::User)
            continue; // a user's own note is not a message
        m.medio = r["medio"].toInt();
        m.ida = r["ida"].toInt();
        m.artaux = r["artaux"].toInt();
        m.addressee = addresseeName(s, m.tip, m.ida);
        m.reason = reasonInOutbox(s, m.tip);
        m.icon = iconInOutbox(m.tip);
        m.byChannel = m.medio == agenda::Channel::Mail ? s(text::Email)
                      : m.medio == agenda::Channel::Letter
                          ? s(text::Letter)
                          : s(text::Email) + u'/' + s(text::Letter);
        m.wentOut = !r["fmedio"].isNull();
        m.state = m.wentOut ? s(text::OutboxTitle) : s(text::OutboxWaiting);
        messages.push_back(std::move(m));
    }
    return messages;
}

QString messages::messageText(Sesion &s, const DayMessage &m)
{
    const int idc = taskAddressee(s, m.tip, m.ida);
    const int idm = agenda::taskSubject(m.tip) == agenda::Subject::Patient ? m.ida : 0;
    const bool byMail =
        m.medio == agenda::Channel::MailOrLetter && !DireccionCliente(s, idc).isEmpty();
    return ComponerMensaje(s, m.tip, idc, idm, m.artaux, byMail ? agenda::Channel::Mail : m.medio);
}
