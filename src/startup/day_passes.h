// The nineteen passes of a day, and what they share. Internal to the daily pass.
#pragma once

#include "printing/html_document.h"
#include "store/session.h"

#include <memory>
#include <vector>

namespace startup
{

inline constexpr int PassCount = 19;
// Doses of a closed program are caught up for this many days; food is consumed for all of them.
inline constexpr int CatchUpDays = 10;
// Rows between two signs of life on a long walk.
inline constexpr int RowsPerNotice = 512;

/// One run of the pass: its days, and what can be told and asked only when it has been written.
struct DayRun {
    Sesion &s;
    QDate hoy = s.reloj.hoy;
    QDate last;
    qint64 days = 0;
    int pass = 0;
    std::vector<store::StoreError> errores;
    bool listMissed = false; // the missed doses
    std::unique_ptr<printing::DocumentHtml> missed = nullptr;
    bool offerSummary = false; // the day sheet

    store::Value setting(std::string_view column) const { return s.configuracion[column]; }

    // A statement that fails is passed over; a disk that fails ends the run.
    template <typename F>
    void attempt(F &&f)
    {
        if (auto e = store::attempt(s, f))
            errores.push_back(*std::move(e));
    }

    // Walks the rows of a recordset, each one tried by itself.
    template <typename F>
    void forEachRow(Recordset &r, F &&f)
    {
        for (int n = 0; !r.EOF_(); r.MoveNext()) {
            if (++n % RowsPerNotice == 0)
                s.progress.tellBar(pass, PassCount);
            this->attempt([&] { f(r); });
        }
    }

    // First day whose doses are looked at.
    QDate from(int afterLast) const
    {
        return days > CatchUpDays ? hoy.addDays(-CatchUpDays) : last.addDays(afterLast);
    }
};

/// Joins the pieces of a board line with one blank.
QString joined(std::initializer_list<QString> parts);
/// Ends a line with a point; some texts of the table bring theirs.
QString withFullStop(const QString &t);
QString numberText(int n);

/// Reminder and birthday measures: the `medio` to use for 1, 2 and 3, else 0 for off.
int measureOf(const store::Value &v);

/// Books what the clinic itself does today: the category's service with the product to bring.
void bookService(DayRun &c, int idm, int ida, int idcat);

/// Each runs inside the day's batch and tries its statements one by one.
namespace passes
{
void foodStock(DayRun &c);
void missedDoses(DayRun &c);
void dosesOfTheDay(DayRun &c);
void doseReminders(DayRun &c);
void birthday(DayRun &c);
void debtors(DayRun &c);
void newClients(DayRun &c);
void inpatients(DayRun &c);
void guests(DayRun &c);
void Alarmas(DayRun &c);
void taskMarks(DayRun &c);
void daySummary(DayRun &c);
void keptAppointments(DayRun &c);
void yesterdayTasks(DayRun &c);
} // namespace passes

} // namespace startup
