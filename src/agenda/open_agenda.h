// The agenda as it stands open: which days are read, their tasks, and where what was moved last
// came from. What the screen shows and does goes through here; nothing of it knows a window.
#pragma once

#include "agenda/day_list.h"

namespace agenda
{

/// The week that a day lies in, from the first day of the week of the locale.
QList<QDate> weekOf(QDate day);

class OpenAgenda
{
public:
    explicit OpenAgenda(Sesion &s) : m_s(s), m_day(s.reloj.hoy) {}

    /// The day in front of the user, and those that are read: it alone, or its week.
    QDate day() const { return m_day; }
    const QList<QDate> &days() const { return m_days; }
    /// Of all days read, by day and hour.
    const std::vector<DayTask> &tasks() const { return m_tasks; }
    std::vector<DayTask> tasksOfDay() const;
    /// nullptr when no task that is read has this id.
    const DayTask *task(int id) const;
    /// Where the eye begins: today the first task still to be done from this hour on; else, and on
    /// any other day, the first. 0 when the day has none.
    int firstInView() const;

    /// Puts another day in front. @return whether it is read, and as the store has it
    bool goTo(QDate day);
    /// Reads the day in front, or its week. @throws StoreError; what was read before stays
    void read(bool week);
    /// Whether this terminal or another one has written tasks since they were read.
    bool isStale() const;
    /// Ids of the tasks of the day in front that were not there among @p before.
    QList<int> addedSince(const std::vector<DayTask> &before) const;

    /// Where the tasks would stand so many days or quarters of an hour on. Tasks without an hour
    /// have no quarters. @return none when one of them would leave its day: all keep their distance
    std::vector<Target> shifted(const QList<int> &ids, int days, int quarters) const;
    /// As moveTasks; the day in front becomes that of the last. @return the ids of what was moved
    QList<int> move(const std::vector<Target> &targets);
    /// As passTasks. @return the ids of what was put on another day; nullopt when it was not to be
    std::optional<QList<int>> pass(const QList<int> &ids, QDate day);
    /// Puts back what was moved last, once. @return its ids, none when it is gone meanwhile
    QList<int> takeBack();
    bool canTakeBack() const { return !m_before.empty(); }
    void forgetMoves() { m_before.clear(); }

private:
    Sesion &m_s;
    QDate m_day;
    QList<QDate> m_days;
    std::vector<DayTask> m_tasks;
    Register m_register;
    std::vector<Spot> m_before; // where what was moved last came from
    qint64 m_version = 0;       // of the tasks when they were read
};

} // namespace agenda
