// The agenda: alarms, the patients' task flag, the day's summary and kept appointments.

#include "startup/day_passes.h"

#include "agenda/alarms.h"
#include "agenda/tasks.h"
#include "board/board_lines.h"
#include "store/lookups.h"
#include "texts/texts.h"

using namespace startup;
using namespace board;

// --- Alarms, and the patients' task flag ---

void passes::Alarmas(DayRun &c)
{
    c.s.progress.tellStage(c.s(text::UpdatingAlarms));
    c.attempt([&] { agenda::loadAlarms(c.s); });
}

void passes::taskMarks(DayRun &c)
{
    Sesion &s = c.s;
    c.attempt([&] {
        Recordset r = s.clientes->OpenRecordset("select idm,tarea from mascotas where tarea = -1");
        c.forEachRow(r, [&](Recordset &f) {
            if (!s.morvane
                     ->read("select TOP 1 tip from TareasAgenda where ida = ? and est = 0 and "
                            "(tip > 0)",
                            f["idm"])
                     .isNull())
                return;
            f.Edit();
            f.Put("tarea", false);
            f.Update();
        });
    });
}

// --- The day's summary ---

void passes::daySummary(DayRun &c)
{
    Sesion &s = c.s;
    c.attempt([&] {
        const int tasks = s.morvane
                              ->read("select count ('dia') as [c] from TareasAgenda where dia = ? "
                                     "and est = 0 and (Tip > 0 or Tip = -47)",
                                     c.hoy)
                              .toInt();
        if (tasks != 0) {
            AgregarPizarra(
                s, joined({s(text::CountedAtLogin), numberText(tasks), s(text::TasksForToday)}),
                picture::Tasks, click::Agenda);
            c.offerSummary = true;
        }
    });
    c.attempt([&] {
        const int automatic = s.morvane
                                  ->read("select count ('fcreacion') as [b] from TareasAgenda "
                                         "where fcreacion = ? and est = 0 and (Tip < 0 and Tip "
                                         "<> ?)",
                                         c.hoy, agenda::TaskKind::Ration)
                                  .toInt();
        if (automatic != 0)
            AgregarPizarra(
                s, joined({s(text::ThereAre), numberText(automatic), s(text::KelvaraTasksToday)}),
                picture::News, click::AutomaticTasks);
    });
}

// --- Kept appointments ---

void passes::keptAppointments(DayRun &c)
{
    Sesion &s = c.s;
    c.attempt([&] {
        // On purpose: today is included, so appointments that are still open this morning count as
        // not kept, and so do the tasks that this run has just booked.
        Recordset r = s.morvane->OpenSnapshot(
            "select ida, est from TareasAgenda where (tip > 0) and dia between ? and ?",
            c.last.addDays(1), c.hoy);
        c.forEachRow(r, [&](const Recordset &f) {
            const int idc = LeerCampo(s, "clientes", "mascotas", f[0].toInt(), "idc").toInt();
            if (f[1].toBool())
                s.morvane->Execute(
                    "update perfiles set TurnosCumplidos = TurnosCumplidos + 1 where idc = ?", idc);
            else
                s.morvane->Execute(
                    "update perfiles set TurnosNoCumplidos = TurnosNoCumplidos + 1 where idc = ?",
                    idc);
        });
    });
}

// --- Yesterday ---

void passes::yesterdayTasks(DayRun &c)
{
    c.attempt([&] {
        const int n = c.s.morvane
                          ->read("SELECT COUNT ('dia') as [TareasAyer] FROM TareasAgenda where dia "
                                 "= ? and est = 0 and (Tip > 0 or Tip = -47)",
                                 c.hoy.addDays(-1))
                          .toInt();
        if (n != 0)
            AgregarPizarra(c.s, c.s(text::YesterdaysTasksUndone), picture::Tasks,
                           click::AgendaOfYesterday);
    });
}
