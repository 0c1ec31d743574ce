#include "agenda/day_list.h"

#include "agenda/task_texts.h"
#include "agenda/tasks.h"
#include "contact/contact.h"
#include "store/lookups.h"
#include "texts/agenda.h"
#include "texts/texts.h"

#include <QLocale>
#include <algorithm>

using namespace agenda;
using namespace Qt::StringLiterals;

namespace
{

constexpr int MinutesWithoutDuration = 30; // for tasks without a length of their own

int minutesOf(Sesion &s, int tip)
{
    if (tip <= 0)
        return MinutesWithoutDuration;
    const int minutes = s.finanzas->read("SELECT tiempo FROM Servicios WHERE Ida = ?", tip).toInt();
    return minutes > 0 ? std::min(minutes, DayMinutes) : MinutesWithoutDuration;
}

/// A stored task: its place, and what its alarm needs.
struct Noted {
    Spot spot;
    int tip = 0, ida = 0;
    bool est = false;
};

std::optional<Noted> read(Sesion &s, int id)
{
    const Recordset r = s.morvane->OpenSnapshot(
        "select tip,ida,dia,hor,ala,est from TareasAgenda where id = ?", id);
    if (r.EOF_())
        return std::nullopt;
    return Noted{{id, r["dia"].toDate(), r["hor"].toTime(), r["ala"].toTime()},
                 r["tip"].toInt(),
                 r["ida"].toInt(),
                 r["est"].toBool()};
}

void write(Sesion &s, const Spot &a)
{
    s.morvane->Execute("UPDATE TareasAgenda SET Dia = ?, hor = ?, ala = ? WHERE id = ?", a.dia,
                       a.hor, a.ala, a.id);
}

/// The alarm for a new hour: at the same distance as from the old hour, but within the day.
QTime DayRun(QTime ala, QTime de, QTime a)
{
    if (!ala.isValid() || !de.isValid())
        return ala;
    const int minutes = (ala.msecsSinceStartOfDay() + de.msecsTo(a)) / 60000;
    return QTime(0, 0).addSecs(std::clamp(minutes, 0, DayMinutes - 1) * 60);
}

/// Sets the session's alarm for a task at its present place; an invalid day silences it. An alarm
/// that has rung at that time does not ring again. A task that is done has no alarm to move: when
/// it was marked, the alarm of another task of the same time and kind may have been silenced
/// instead.
void followAlarm(Sesion &s, const Noted &t)
{
    if (t.est)
        return;
    const QTime ala = t.spot.dia == s.reloj.hoy ? t.spot.ala : QTime();
    const auto its = [&t](const store::Alarm &a) { return a.task == t.spot.id; };
    const bool rings = ala.isValid() && std::ranges::none_of(s.Alarmas, [&](const store::Alarm &a) {
                           return its(a) && a.attended && a.hour == ala;
                       });
    const auto wait = std::ranges::find_if(
        s.Alarmas, [&](const store::Alarm &a) { return its(a) && !a.attended; });
    if (wait == s.Alarmas.end()) {
        if (rings)
            s.Alarmas.push_back({ala, t.tip, false, std::nullopt, t.spot.id});
    } else if (rings) {
        wait->hour = ala;
    } else {
        s.Alarmas.erase(wait);
    }
}

void setDetail(Sesion &s, DayTask &t, Register &register_)
{
    const QString hour = t.hor.isValid() ? longHour(t.hor) : QString();
    // A user's note is the subject of the task, so it comes right after the hour.
    QStringList lines{hour, t.des};
    if (t.tip == TaskKind::Ration)
        lines = {(hour + u' ' + t.des).trimmed()};
    if (taskSubject(t.tip) == Subject::Patient) {
        const Register::Patient &p = register_.OfPatient(s, t.ida);
        t.patient = p.nom;
        t.client = p.client;
        t.telephones = p.telephones;
        lines << p.nom;
        if (!p.client.isEmpty())
            lines << s(text::Client) + u": "_s + p.client;
        if (!p.telephones.isEmpty())
            lines << s(text::Phones) + u": "_s + p.telephones;
    }
    lines.removeAll(QString());
    t.detail = lines.join(u'\n');
}

std::vector<DayTask> readTasks(Sesion &s, Recordset r, Register &register_)
{
    register_.bringUpToDate(s);
    std::vector<DayTask> tasks;
    for (; !r.EOF_(); r.MoveNext()) {
        DayTask t;
        t.id = r["id"].toInt();
        t.tip = r["tip"].toInt();
        t.ida = r["ida"].toInt();
        t.dia = r["dia"].toDate();
        t.created = r["fcreacion"].toDate();
        t.hor = r["hor"].toTime();
        t.ala = r["ala"].toTime();
        t.est = r["est"].toBool();
        t.des = r["des"].toText();
        const Register::Item &c = register_.ofItem(s, t.tip, r["artaux"].toLong());
        t.item = c.nom;
        t.icon = c.icon;
        t.minutes = c.minutes;
        setDetail(s, t, register_);
        tasks.push_back(std::move(t));
    }
    return tasks;
}

/// Describes tasks in a question: hour, concept and patient or note of a single task, the number of
/// several.
QString named(Sesion &s, const QList<int> &ids)
{
    if (ids.size() > 1)
        return s(text::NumberOfTasks).arg(ids.size());
    Register register_;
    const std::vector<DayTask> tasks = readTasks(
        s, s.morvane->OpenSnapshot("select * from TareasAgenda where id = ?", ids.first()),
        register_);
    if (tasks.empty())
        return {};
    const DayTask &t = tasks.front();
    QStringList parts{t.item, t.patient.isEmpty() ? t.des.simplified() : t.patient};
    parts.removeAll(QString());
    const QString hour = t.hor.isValid() ? t.hor.toString(u"HH:mm") + u"  "_s : QString();
    return hour + parts.join(u", "_s);
}

} // namespace

void Register::bringUpToDate(Sesion &s)
{
    const QList<qint64> versions{s.clientes->version("clientes"), s.clientes->version("mascotas"),
                                 s.finanzas->version("articulos"), s.finanzas->version("Servicios"),
                                 s.finanzas->version("FLCategorias")};
    if (versions == m_versions)
        return;
    m_versions = versions;
    m_patients.clear();
    m_concepts.clear();
}

const Register::Patient &Register::OfPatient(Sesion &s, int idm)
{
    if (const auto known = m_patients.constFind(idm); known != m_patients.constEnd())
        return *known;
    const int idc = LeerCampo(s, "clientes", "mascotas", idm, "idc").toInt();
    return *m_patients.insert(idm, {LeerCampo(s, "clientes", "mascotas", idm, "nom"),
                                    LeerCampo(s, "clientes", "clientes", idc, "ayn"),
                                    TelefonosCliente(s, idc)});
}

const Register::Item &Register::ofItem(Sesion &s, int tip, qint64 artaux)
{
    const auto key = std::pair(tip, artaux);
    if (const auto known = m_concepts.constFind(key); known != m_concepts.constEnd())
        return *known;
    const QString nom = taskConcept(s, tip, artaux);
    return *m_concepts.insert(key, {nom, agendaIcon(s, nom), minutesOf(s, tip)});
}

std::vector<DayTask> agenda::dayTasks(Sesion &s, QDate dia, Register &register_)
{
    return readTasks(s,
                     s.morvane->OpenSnapshot("select * from TareasAgenda where dia = ? and ((tip "
                                             "> 0 OR tip = ?) OR (tip = ?)) order by hor",
                                             dia, TaskKind::UserTask, TaskKind::Ration),
                     register_);
}

std::vector<DayTask> agenda::dayTasks(Sesion &s, QDate dia)
{
    Register register_;
    return dayTasks(s, dia, register_);
}

std::vector<DayTask> agenda::dayAppointments(Sesion &s, QDate dia)
{
    Register register_;
    return readTasks(
        s,
        s.morvane->OpenSnapshot(
            "select * from TareasAgenda where dia = ? and (tip > 0) order by hor", dia),
        register_);
}

std::vector<KelvaraTask> agenda::kelvaraTasks(Sesion &s)
{
    std::vector<KelvaraTask> tasks;
    Recordset r = s.morvane->OpenSnapshot(
        "select * from TareasAgenda where fcreacion = ? and (medio = ? or medio = ? or medio = ?) "
        "and (Tip < 0 and Tip <> ?)",
        s.reloj.hoy, Channel::Mail, Channel::Letter, Channel::MailOrLetter, TaskKind::Ration);
    for (; !r.EOF_(); r.MoveNext()) {
        const int tip = r["tip"].toInt(), ida = r["ida"].toInt();
        KelvaraTask t;
        t.reason = taskConcept(s, tip, 0);
        if (taskSubject(tip) == Subject::Patient)
            t.addressee =
                s(text::DayListPatient) + LeerCampo(s, "clientes", "mascotas", ida, "nom");
        else if (taskSubject(tip) == Subject::Client)
            t.addressee = s(text::DayListClient) + LeerCampo(s, "clientes", "clientes", ida, "ayn");
        t.medio = channelInWords(s, r["medio"].toInt());
        t.done = !r["fmedio"].isNull();
        tasks.push_back(std::move(t));
    }
    return tasks;
}

bool agenda::canMoveTasks(Sesion &s)
{
    if (s.user.isCommon())
        s.dialogos.Mensaje(s(text::FeatureNotAvailable));
    return !s.user.isCommon();
}

QList<int> agenda::inItsDirection(QList<int> rows, int current)
{
    if (rows.size() > 1 && current == rows.first())
        std::ranges::reverse(rows);
    return rows;
}

std::optional<std::vector<Spot>> agenda::passTasks(Sesion &s, const QList<int> &ids, QDate dia)
{
    if (!canMoveTasks(s) || ids.isEmpty() || !dia.isValid()
        || !s.dialogos.Pregunta(s(text::DelayTasksQuestion) + u"\n\n"_s + named(s, ids) + u"\n→ "_s
                                + QLocale().toString(dia, QLocale::LongFormat)))
        return std::nullopt;
    std::vector<Target> targets;
    for (const int id : ids)
        targets.push_back({id, dia, {}});
    return moveTasks(s, targets);
}

std::vector<Spot> agenda::moveTasks(Sesion &s, const std::vector<Target> &targets)
{
    std::vector<Spot> before;
    if (!canMoveTasks(s))
        return before;
    std::vector<Noted> moved;
    Lote lote(s);
    for (const Target &d : targets) {
        auto task = read(s, d.id);
        if (!task || !d.dia.isValid())
            continue;
        Spot &spot = task->spot;
        before.push_back(spot);
        spot.dia = d.dia;
        if (d.hour.isValid()) {
            spot.ala = DayRun(spot.ala, spot.hor, d.hour);
            spot.hor = d.hour;
        }
        write(s, spot);
        moved.push_back(*task);
    }
    lote.commit();
    for (const Noted &task : moved)
        followAlarm(s, task);
    return before;
}

bool agenda::giveBackTasks(Sesion &s, const std::vector<Spot> &spots)
{
    if (!canMoveTasks(s))
        return false;
    std::vector<Noted> returned;
    Lote lote(s);
    for (const Spot &spot : spots)
        if (auto task = read(s, spot.id)) {
            task->spot = spot;
            write(s, spot);
            returned.push_back(*task);
        }
    lote.commit();
    for (const Noted &task : returned)
        followAlarm(s, task);
    return !returned.empty();
}

bool agenda::deleteTasks(Sesion &s, const QList<int> &ids)
{
    if (!canMoveTasks(s) || ids.isEmpty()
        || !s.dialogos.askBeforeLoss(s(text::DeleteQuestion) + u"\n\n"_s + named(s, ids)))
        return false;
    std::vector<Noted> idas;
    Lote lote(s);
    for (const int id : ids) {
        if (auto task = read(s, id)) {
            task->spot.dia = {};
            idas.push_back(*task);
        }
        s.morvane->Execute("delete * from TareasAgenda where id = ?", id);
    }
    lote.commit();
    for (const Noted &task : idas)
        followAlarm(s, task);
    return true;
}

bool agenda::toggleDone(Sesion &s, int id)
{
    auto task = read(s, id);
    if (!task)
        return false;
    task->est = !task->est;
    s.morvane->Execute("update TareasAgenda set est = ? where id = ?", task->est, id);
    if (task->spot.dia != s.reloj.hoy || !task->spot.ala.isValid())
        return task->est;
    const auto alarm = std::ranges::find_if(s.Alarmas, [&](const store::Alarm &a) {
        return a.hour == task->spot.ala && a.tip == task->tip;
    });
    if (alarm != s.Alarmas.end())
        alarm->attended = task->est;
    else
        followAlarm(s, *task); // it was done at the start, so its alarm was not loaded
    return task->est;
}
