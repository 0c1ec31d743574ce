#include "board/ringing.h"

#include "agenda/tasks.h"
#include "contact/contact.h"
#include "store/lookups.h"
#include "texts/texts.h"

using namespace board;
using namespace Qt::StringLiterals;

namespace
{

constexpr int MinutesAhead = 2;

constexpr int FeedingText = 21;
constexpr int ClientText = 14;
constexpr int PhonesText = 15;
constexpr int UserTaskText = text::UserTask;

/// Minutes since midnight, ignoring seconds.
int minuteOfDay(QTime t) { return t.hour() * 60 + t.minute(); }

QString nameOf(Sesion &s, int tip)
{
    if (tip == agenda::TaskKind::Ration)
        return s(FeedingText);
    if (tip == agenda::TaskKind::UserTask)
        return s(UserTaskText);
    if (s.finanzas->read("select ida from Servicios where ida = ?", tip).isNull())
        return {};
    return LeerCampo(s, "finanzas", "articulos", tip, "nom");
}

QString patientOf(Sesion &s, const store::Alarm &alarm)
{
    // Only tasks of a service refer to a patient; a user's task holds the user there.
    if (alarm.tip <= 0 || !alarm.ida)
        return {};
    const QString name = LeerCampo(s, "clientes", "mascotas", *alarm.ida, "nom");
    if (name.isEmpty())
        return {};
    const int owner = LeerCampo(s, "clientes", "mascotas", *alarm.ida, "idc").toInt();
    const QString phones = TelefonosCliente(s, owner);
    QString text = u"\n\n"_s + name + u'\n' + s(ClientText) + u": "_s
                   + LeerCampo(s, "clientes", "clientes", owner, "ayn");
    if (!phones.isEmpty())
        text += u'\n' + s(PhonesText) + u": "_s + phones;
    return text;
}

/// The time of a user's task and the note on it.
QString noteOf(Sesion &s, const store::Alarm &alarm)
{
    if (alarm.tip != agenda::TaskKind::UserTask)
        return {};
    const Recordset r =
        s.morvane->OpenSnapshot("select hor, des from TareasAgenda where id = ?", alarm.task);
    if (r.EOF_())
        return {};
    QStringList lines{r["hor"].toTime().toString(u"HH:mm"), r["des"].toText()};
    lines.removeAll(QString());
    return lines.isEmpty() ? QString() : u"\n\n"_s + lines.join(u'\n');
}

} // namespace

QStringList board::ringingAlarms(Sesion &s)
{
    QStringList texts;
    const int now = minuteOfDay(s.reloj.hourOf());
    for (store::Alarm &alarm : s.Alarmas) {
        const int minutes = minuteOfDay(alarm.hour) - now;
        if (alarm.attended || !alarm.hour.isValid() || minutes < 0 || minutes > MinutesAhead)
            continue;
        alarm.attended = true;
        QString text = u"Agenda: "_s;
        try {
            text += nameOf(s, alarm.tip);
            text += patientOf(s, alarm);
            text += noteOf(s, alarm);
        } catch (const store::StoreError &) {
            // Someone is waiting for this reminder: an incomplete one is better than none.
        }
        texts.append(text);
    }
    return texts;
}

bool board::dayChanged(const Sesion &s) { return s.reloj.now().date() > s.reloj.hoy; }
