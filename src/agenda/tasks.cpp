#include "agenda/tasks.h"

#include "store/identifiers.h"

#include <QLocale>
#include <QRegularExpression>

using namespace agenda;

namespace
{

const QTime FirstAppointment(8, 30);
const QTime LastAppointment(22, 0);
constexpr int StepInMinutes = 30;    // for a service without a length of its own
constexpr int NearnessInMinutes = 5; // a task this near occupies the slot

// Hours and alarms are stored to the minute.
QTime toMinute(QTime t) { return t.isValid() ? QTime(t.hour(), t.minute()) : t; }

int durationOf(Sesion &s, int idServicio)
{
    const store::Value time =
        s.finanzas->read("SELECT tiempo FROM Servicios WHERE Ida = ?", idServicio);
    return time.isNull() ? StepInMinutes : std::min(time.toInt(), DayMinutes);
}

int minutesOf(QTime t) { return t.msecsSinceStartOfDay() / 60000; }
QTime hourOf(int minutes) { return QTime(minutes / 60, minutes % 60); }

// On purpose: there is no condition on the day, so a task of any day occupies the time.
bool hasTaskNear(Sesion &s, int minutes)
{
    return !s.morvane
                ->read("SELECT TOP 1 hor FROM TareasAgenda WHERE hor BETWEEN ? AND ?",
                       hourOf(minutes - NearnessInMinutes), hourOf(minutes + NearnessInMinutes))
                .isNull();
}

int todayTasks(Sesion &s)
{
    return s.morvane->read("SELECT COUNT(*) FROM TareasAgenda WHERE dia = ?", s.reloj.hoy).toInt();
}

} // namespace

int AgregarTarea(Sesion &s, const Task &t)
{
    Lote lote(s);
    const int id = store::takeTaskId(s);
    const QString des = s.morvane->trimmed("TareasAgenda", "des", t.des);
    // Without a day neither hour nor alarm is stored.
    const store::Value dia(t.dia);
    const store::Value hor = t.dia.isValid() ? store::Value(toMinute(t.hor)) : store::Value();
    const store::Value ala = t.dia.isValid() ? store::Value(toMinute(t.ala)) : store::Value();
    s.morvane->Execute("insert into TareasAgenda (tip, ida, dia, hor, ala, medio, fcreacion, "
                       "artaux, des, id) values (?, ?, ?, ?, ?, ?, ?, ?, ?, ?)",
                       t.tip, t.ida, dia, hor, ala, t.medio, t.fcreacion, t.artaux, des, id);
    lote.commit();
    if (!ala.isNull() && t.dia == s.reloj.hoy)
        s.Alarmas.push_back({ala.toTime(), t.tip, false, std::nullopt, id});
    return id;
}

QTime BuscarHorarioLibre(Sesion &s, int idServicio)
{
    const int step = durationOf(s, idServicio);
    const int first = minutesOf(FirstAppointment), last = minutesOf(LastAppointment);
    int candidate = first, steps = 0;
    while (step > 0 && candidate <= last && hasTaskNear(s, candidate)) {
        candidate += step;
        ++steps;
    }
    // No more steps than there are tasks today.
    if (steps > 0)
        candidate = first + std::min(steps, todayTasks(s)) * step;
    return candidate > last ? FirstAppointment : hourOf(candidate);
}

QTime HoraTurnoDelDia(Sesion &s, int idm, QDate dia)
{
    return s.morvane
        ->read("select hor from TareasAgenda where dia = ? and est = 0 and fmedio is null and "
               "ida = ? and tip > 0 order by hor",
               dia, idm)
        .toTime();
}

QString agenda::longHour(QTime hour)
{
    // Called hundreds of times for a full day, so the format is cached per locale.
    thread_local QLocale local = QLocale::c();
    thread_local QString format;
    if (format.isEmpty() || local != QLocale()) {
        // The long format ends with a time zone, which is not wanted.
        static const QRegularExpression zone(QStringLiteral("\\s*\\(?t+\\)?\\s*"));
        local = QLocale();
        format = local.timeFormat(QLocale::LongFormat).remove(zone);
    }
    return local.toString(hour, format);
}

void MarcarTareaRealizada(Sesion &s, int tip, qint64 artaux, int ida)
{
    const bool known =
        !s.finanzas->OpenSnapshot("SELECT Nom FROM Articulos WHERE Ida = ?", tip).EOF_();
    Recordset tasks =
        known ? s.morvane->OpenRecordset(
            "select * from TareasAgenda where tip = ? and ida = ? and ArtAux = ? and "
            "est = 0 and fcreacion <= date() order by fcreacion asc",
            tip, ida, artaux)
              : s.morvane->OpenRecordset(
                  "select * from TareasAgenda where ida = ? and ArtAux = ? and est = 0 and "
                  "fcreacion <= date() order by fcreacion asc",
                  ida, artaux);
    if (known && tasks.EOF_())
        tasks = s.morvane->OpenRecordset(
            "select * from TareasAgenda where tip = ? and ida = ? and est = 0 and "
            "fcreacion <= date() order by fcreacion asc",
            tip, ida);
    if (tasks.EOF_())
        return;
    tasks.Edit();
    tasks.Put("est", true);
    tasks.Put("frealizacion", s.reloj.hoy);
    tasks.Update();
}
