// The day's list of tasks and what can be done with them.
#pragma once

#include "store/session.h"

#include <QHash>

namespace agenda
{

/// One task of a day as the list and the hours show it.
struct DayTask {
    int id = 0;
    int tip = 0;
    int ida = 0;
    QDate dia;
    QDate created;
    QTime hor; // invalid without one
    QTime ala;
    int minutes = 0;  // that it takes
    bool est = false; // done
    QString item;
    QString icon;
    QString des;
    QString patient;
    QString client;
    QString telephones;
    QString detail; // hour and all of the above, lines parted by line feeds

    bool operator==(const DayTask &) const = default;
};

/// What tasks are about, looked up once, and anew when somebody has written one of those tables.
/// Whoever reads days again and again keeps one.
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
    /// To be called before the tasks of a day are read.
    void bringUpToDate(Sesion &s);
    const Patient &OfPatient(Sesion &s, int idm);
    const Item &ofItem(Sesion &s, int tip, qint64 artaux);

private:
    QList<qint64> m_versions; // of the tables
    QHash<int, Patient> m_patients;
    QHash<std::pair<int, qint64>, Item> m_concepts;
};

/// Appointments, users' tasks and feeding rounds of a day, by hour.
std::vector<DayTask> dayTasks(Sesion &s, QDate dia, Register &register_);
std::vector<DayTask> dayTasks(Sesion &s, QDate dia);
/// Appointments alone, as the booking dialog lists them.
std::vector<DayTask> dayAppointments(Sesion &s, QDate dia);

/// One communication that the system decided on today.
struct KelvaraTask {
    QString reason;
    QString addressee; // "Cliente: " or "Mascota: " and the name
    QString medio;
    bool done = false; // it has gone out
};
std::vector<KelvaraTask> kelvaraTasks(Sesion &s);

/// Whether the user may delay, move or delete tasks; a Common user is told that he may not.
bool canMoveTasks(Sesion &s);

/// Selected rows in the direction of the selection: it ends at the current one.
/// @param rows in ascending order
QList<int> inItsDirection(QList<int> rows, int current);

// A task that is open takes its alarm along: what leaves today silences it, what comes to today
// brings it.

/// Where a task goes. An invalid hour leaves it the one that it has, or none.
struct Target {
    int id = 0;
    QDate dia;
    QTime hour;
};
/// Where a task stood. An invalid hour or alarm is none.
struct Spot {
    int id = 0;
    QDate dia;
    QTime hor;
    QTime ala;
};
/// Puts tasks at other hours, of other days perhaps; nothing is asked: the hand has shown it. Their
/// alarms stay as far from the hour as they were.
/// @return where those that were moved stood before; none when the user may not, or they are gone
std::vector<Spot> moveTasks(Sesion &s, const std::vector<Target> &targets);
/// Asks, and puts the tasks on another day. @return as moveTasks; nullopt when it was not to be
std::optional<std::vector<Spot>> passTasks(Sesion &s, const QList<int> &ids, QDate dia);
/// Puts them back where they stood, without an hour too. @return whether any was there still
bool giveBackTasks(Sesion &s, const std::vector<Spot> &spots);
/// Asks, and deletes the tasks. @return whether they are gone
bool deleteTasks(Sesion &s, const QList<int> &ids);
/// Marks a task as done, or as open again, and with it the first alarm of today at the same time
/// for the same kind, whosever it is, on purpose. @return whether it is done now
bool toggleDone(Sesion &s, int id);

} // namespace agenda
