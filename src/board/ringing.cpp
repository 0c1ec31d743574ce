#include "board/ringing.h"

#include "agenda/tasks.h"
#include "contact/contact.h"
#include "store/lookups.h"

using namespace Qt::StringLiterals;

namespace
{

constexpr int minutesAhead = 2;

constexpr int feedingText = 21;
constexpr int clientText = 14;
constexpr int phonesText = 15;
constexpr int userTaskText = 1109;

/// Whole minutes of the clock, seconds do not count.
int minuteOfDay(QTime t) { return t.hour() * 60 + t.minute(); }

QString nameOf(Sesion &s, int tip)
{
    if (tip == TipoTarea::Racion)
        return s(feedingText);
    if (tip == TipoTarea::TareaDeUsuario)
        return s(userTaskText);
    if (s.finanzas->Leer("select ida from Servicios where ida = ?", tip).EsNulo())
        return {};
    return LeerCampo(s, "finanzas", "articulos", tip, "nom");
}

QString patientOf(Sesion &s, const Alarma &alarm)
{
    // Only the tasks of a service are about a patient; a user's task holds the user there.
    if (alarm.tip <= 0 || !alarm.ida)
        return {};
    const QString name = LeerCampo(s, "clientes", "mascotas", *alarm.ida, "nom");
    if (name.isEmpty())
        return {};
    const int owner = LeerCampo(s, "clientes", "mascotas", *alarm.ida, "idc").toInt();
    const QString phones = TelefonosCliente(s, owner);
    QString text = u"\n\n"_s + name + u'\n' + s(clientText) + u": "_s
                   + LeerCampo(s, "clientes", "clientes", owner, "ayn");
    if (!phones.isEmpty())
        text += u'\n' + s(phonesText) + u": "_s + phones;
    return text;
}

/// When it is to be done, and what its user noted about it.
QString noteOf(Sesion &s, const Alarma &alarm)
{
    if (alarm.tip != TipoTarea::TareaDeUsuario)
        return {};
    const Recordset r =
        s.morvane->OpenSnapshot("select hor, des from TareasAgenda where id = ?", alarm.tarea);
    if (r.EOF_())
        return {};
    QStringList lines{r["hor"].toTime().toString(u"HH:mm"), r["des"].toText()};
    lines.removeAll(QString());
    return lines.isEmpty() ? QString() : u"\n\n"_s + lines.join(u'\n');
}

} // namespace

QStringList AlarmasQueSuenan(Sesion &s)
{
    QStringList texts;
    const int now = minuteOfDay(s.reloj.Hora());
    for (Alarma &alarm : s.Alarmas) {
        const int minutes = minuteOfDay(alarm.hora) - now;
        if (alarm.atendida || !alarm.hora.isValid() || minutes < 0 || minutes > minutesAhead)
            continue;
        alarm.atendida = true;
        QString text = u"Agenda: "_s;
        try {
            text += nameOf(s, alarm.tip);
            text += patientOf(s, alarm);
            text += noteOf(s, alarm);
        } catch (const ErrorDeAlmacen &) {
            // Somebody waits for this reminder: what could be read is better than silence.
        }
        texts.append(text);
    }
    return texts;
}

bool CambioElDia(const Sesion &s) { return s.reloj.ahora().date() > s.reloj.hoy; }
