#include "agenda/open_agenda.h"

#include "agenda/hours_layout.h"
#include "agenda/tasks.h"

#include <QLocale>
#include <algorithm>

using namespace agenda;

namespace
{

constexpr int Quarter = 15;
constexpr std::string_view Tasks = "TareasAgenda";

QList<int> idsOf(const std::vector<Spot> &spots)
{
    QList<int> ids;
    for (const Spot &spot : spots)
        ids << spot.id;
    return ids;
}

} // namespace

QList<QDate> agenda::weekOf(QDate day)
{
    const int back = (day.dayOfWeek() - QLocale().firstDayOfWeek() + 7) % 7;
    QList<QDate> days;
    for (int i = 0; i < 7; ++i)
        days << day.addDays(i - back);
    return days;
}

std::vector<DayTask> OpenAgenda::tasksOfDay() const
{
    std::vector<DayTask> tasks;
    std::ranges::copy_if(m_tasks, std::back_inserter(tasks),
                         [this](const DayTask &t) { return t.dia == m_day; });
    return tasks;
}

const DayTask *OpenAgenda::task(int id) const
{
    const auto t = std::ranges::find(m_tasks, id, &DayTask::id);
    return t == m_tasks.end() ? nullptr : &*t;
}

int OpenAgenda::firstInView() const
{
    int first = 0;
    for (const DayTask &t : m_tasks) {
        if (t.dia != m_day)
            continue;
        if (m_day == m_s.reloj.hoy && !t.est && t.hor >= m_s.reloj.hourOf())
            return t.id;
        if (first == 0)
            first = t.id;
    }
    return first;
}

bool OpenAgenda::goTo(QDate day)
{
    m_day = day;
    return m_days.contains(day) && !isStale();
}

void OpenAgenda::read(bool week)
{
    const qint64 version = m_s.morvane->version(Tasks);
    const QList<QDate> days = week ? weekOf(m_day) : QList<QDate>{m_day};
    std::vector<DayTask> tasks;
    for (const QDate day : days)
        std::ranges::move(dayTasks(m_s, day, m_register), std::back_inserter(tasks));
    m_version = version;
    m_days = days;
    m_tasks = std::move(tasks);
}

bool OpenAgenda::isStale() const { return m_s.morvane->version(Tasks) != m_version; }

QList<int> OpenAgenda::addedSince(const std::vector<DayTask> &before) const
{
    QList<int> added;
    for (const DayTask &t : m_tasks)
        if (t.dia == m_day && std::ranges::find(before, t.id, &DayTask::id) == before.end())
            added << t.id;
    return added;
}

std::vector<Target> OpenAgenda::shifted(const QList<int> &ids, int days, int quarters) const
{
    std::vector<Target> targets;
    bool moves = false;
    for (const int id : ids) {
        const DayTask *t = task(id);
        if (!t)
            continue;
        Target target{id, t->dia.addDays(days), {}};
        if (quarters != 0 && t->hor.isValid()) {
            const int minute = dayMinute(t->hor) + quarters * Quarter;
            if (minute < 0 || minute >= DayMinutes)
                return {};
            target.hour = {minute / 60, minute % 60};
        }
        moves = moves || days != 0 || target.hour.isValid();
        targets.push_back(target);
    }
    return moves ? targets : std::vector<Target>{};
}

QList<int> OpenAgenda::move(const std::vector<Target> &targets)
{
    const std::vector<Spot> before = moveTasks(m_s, targets);
    if (!before.empty()) {
        m_before = before;
        m_day = targets.back().dia;
    }
    return idsOf(before);
}

std::optional<QList<int>> OpenAgenda::pass(const QList<int> &ids, QDate day)
{
    const auto before = passTasks(m_s, ids, day);
    if (!before)
        return std::nullopt;
    m_before = *before;
    return idsOf(m_before);
}

QList<int> OpenAgenda::takeBack()
{
    const std::vector<Spot> before = std::exchange(m_before, {});
    if (before.empty() || !giveBackTasks(m_s, before))
        return {};
    m_day = before.back().dia;
    return idsOf(before);
}
