// The tasks of a day, and the actions on them.
#pragma once

#include "store/session.h"

#include <QHash>

namespace agenda
{

/// One task of a day as the list and the hours view show it.
struct DayTask {
    int id = 0;
    int tip = 0;
    int ida = 0;
    QDate dia;
    QDate created;
    QTime hor;        // invalid for none
    QTime ala;        // invalid for none
    int minutes = 0;  // how long it takes
    bool est = false; // done
    QString item;
    QString icon;
    QString des;
    QString patient;
    QString client;
    QString telephones;
    QString detail; // hour, note, patient, client, telephones; separated by line feeds

    bool operator==(const DayTask &) const = default;
};

/// A cache of the patients and concepts that tasks refer to; it is refilled when one of their
/// tables has been written. Forms that read days repeatedly keep one.
class Register
{
public:
    struct Patient {
        QString nom, client, telephones;
    };
    struct Item {
        QString nom, icon;
        int minutes = 0;
    };
    /// Empties the cache if its tables have changed. Call it before reading the tasks of a day.
    void bringUpToDate(Sesion &s);
    /// A patient and its owner; empty texts when there is no such patient.
    const Patient &OfPatient(Sesion &s, int idm);
    /// What a task of this kind and product is called, its picture and its length.
    const Item &ofItem(Sesion &s, int tip, qint64 artaux);

private:
    QList<qint64> m_versions; // of the tables it was filled from
    QHash<int, Patient> m_patients;
    QHash<std::pair<int, qint64>, Item> m_concepts;
};

/// Appointments, users' tasks and feeding rounds of a day, ordered by hour.
std::vector<DayTask> dayTasks(Sesion &s, QDate dia, Register &register_);
/// The same with a cache for this call only.
std::vector<DayTask> dayTasks(Sesion &s, QDate dia);
/// The appointments alone, as the booking dialog lists them.
std::vector<DayTask> dayAppointments(Sesion &s, QDate dia);

/// One communication that the program created today by itself.
struct KelvaraTask {
    QString reason;
    QString addressee; // "Client: " or "Patient: " in the session's language, and the name
    QString medio;
    bool done = false; // it has gone out
};
/// The communications that the program created today.
std::vector<KelvaraTask> kelvaraTasks(Sesion &s);

/// Whether the user may postpone, move or delete tasks. If not (a Common user), a message says so.
bool canMoveTasks(Sesion &s);

/// The selected rows in the order in which they were selected, which ends at the current row.
/// @param rows in ascending order
QList<int> inItsDirection(QList<int> rows, int current);

// Moving an open task takes its alarm along: leaving today silences the alarm, coming to today
// sets it.

/// Where a task is to be moved. An invalid hour keeps the task's hour, if it has one.
struct Target {
    int id = 0;
    QDate dia;
    QTime hour;
};
/// Where a task was before. An invalid hour or alarm means that it had none.
struct Spot {
    int id = 0;
    QDate dia;
    QTime hor;
    QTime ala;
};
/// Moves tasks to other hours or days without asking, since the user has just moved them by hand.
/// Their alarms keep their distance from the hour.
/// @return where the moved tasks were before; empty when the user may not move tasks, or when the
///         tasks no longer exist
std::vector<Spot> moveTasks(Sesion &s, const std::vector<Target> &targets);
/// Asks for confirmation and moves the tasks to another day.
/// @return as moveTasks; nullopt when the user may not or says no
std::optional<std::vector<Spot>> passTasks(Sesion &s, const QList<int> &ids, QDate dia);
/// Undoes a move: puts the tasks back, also those that had no hour.
/// @return whether any of them still exists
bool giveBackTasks(Sesion &s, const std::vector<Spot> &spots);
/// Asks for confirmation and deletes the tasks. @return whether they were deleted
bool deleteTasks(Sesion &s, const QList<int> &ids);
/// Marks a task as done, or as open again, and with it today's first alarm at the same time for the
/// same kind of task.
/// On purpose: that alarm may belong to another task.
/// @return whether the task is done now
bool toggleDone(Sesion &s, int id);

} // namespace agenda
