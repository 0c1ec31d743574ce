// The passes that make up the daily pass, and what they share. Internal to it.
#pragma once

#include "printing/html_document.h"
#include "store/session.h"

#include <memory>
#include <vector>

namespace startup
{

inline constexpr int PassCount = 19;
// Doses that fell due while the program was closed are made up for this many days back at most;
// food is consumed for all the days.
inline constexpr int CatchUpDays = 10;
// Rows between two updates of the progress bar in a long loop.
inline constexpr int RowsPerNotice = 512;

/// One run of the daily pass: the days it covers, and what to report and ask once it is written.
struct DayRun {
    Sesion &s;
    QDate hoy = s.reloj.hoy;
    QDate last;
    qint64 days = 0;
    int pass = 0;
    std::vector<store::StoreError> errores;
    bool listMissed = false; // offer the list of missed doses
    std::unique_ptr<printing::DocumentHtml> missed = nullptr;
    bool offerSummary = false; // offer the day sheet

    /// Value of a column of the settings row.
    store::Value setting(std::string_view column) const { return s.configuracion[column]; }

    /// Runs @p f. A statement that fails is noted in `errores` and skipped; a failing disk throws
    /// StoreError and so ends the run.
    template <typename F>
    void attempt(F &&f)
    {
        if (auto e = store::attempt(s, f))
            errores.push_back(*std::move(e));
    }

    /// Calls @p f with each row of a recordset; a row that fails does not stop the others.
    template <typename F>
    void forEachRow(Recordset &r, F &&f)
    {
        for (int n = 0; !r.EOF_(); r.MoveNext()) {
            if (++n % RowsPerNotice == 0)
                s.progress.tellBar(pass, PassCount);
            this->attempt([&] { f(r); });
        }
    }

    /// First day whose doses are checked: @p afterLast days after the last start, but no more than
    /// DaysThatRecovered days ago.
    QDate from(int afterLast) const
    {
        return days > CatchUpDays ? hoy.addDays(-CatchUpDays) : last.addDays(afterLast);
    }
};

/// Joins the pieces of a board line with single spaces.
QString joined(std::initializer_list<QString> parts);
/// Adds a full stop unless there is one already; some texts of the table end with their own.
QString withFullStop(const QString &t);
/// A number in plain digits, whatever the locale.
QString numberText(int n);

/// Turns a reminder or birthday setting into the channel (agenda::Channel) to use.
/// @return the setting itself for 1, 2 and 3, else 0: switched off
int measureOf(const store::Value &v);

/// Books a visit for today: the service of category @p idcat, which takes product @p ida to
/// patient @p idm.
void bookService(DayRun &c, int idm, int ida, int idcat);

/// The passes in files of their own. Each runs inside the day's batch and tries its statements one
/// by one, so that a failing statement does not stop the rest.
namespace passes
{
/// Takes each day's ration from the stocks and warns of those that run out.
void foodStock(DayRun &c);
/// Doses that fell due while the program was closed.
void missedDoses(DayRun &c);
/// Doses of today, and visits for those of the closed days that the clinic gives itself.
void dosesOfTheDay(DayRun &c);
/// Reminders of doses that fall due in the next days.
void doseReminders(DayRun &c);
/// Today's birthdays of patients.
void birthday(DayRun &c);
/// Moves unpaid debts on to their next reminder.
void debtors(DayRun &c);
/// Greets clients added in the last two days who have an e-mail address.
void newClients(DayRun &c);
/// Counts the inpatients.
void inpatients(DayRun &c);
/// Boarded animals and reservations, and the feeding rounds.
void guests(DayRun &c);
/// Loads the alarms of today.
void Alarmas(DayRun &c);
/// Clears the task flag of patients who have no open task any more.
void taskMarks(DayRun &c);
/// Summarises today's tasks on the board.
void daySummary(DayRun &c);
/// Counts in the clients' profiles who kept their appointments and who did not.
void keptAppointments(DayRun &c);
/// Reports the tasks that were left open yesterday.
void yesterdayTasks(DayRun &c);
} // namespace passes

} // namespace startup
