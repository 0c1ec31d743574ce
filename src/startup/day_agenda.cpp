// The agenda: alarms, the patients' task flag, the day's summary and who keeps appointments.

#include "startup/day_passes.h"

#include "agenda/alarms.h"
#include "board/board_lines.h"
#include "store/lookups.h"

// --- Alarms, and the patients' task flag ---

void pases::Alarmas(Corrida &c)
{
    c.s.avance.Etapa(c.s(3444));
    c.Intentar([&] { CargarAlarmas(c.s); });
}

void pases::MarcasDeTarea(Corrida &c)
{
    Sesion &s = c.s;
    c.Intentar([&] {
        Recordset r = s.clientes->OpenRecordset("select idm,tarea from mascotas where tarea = -1");
        c.PorFila(r, [&](Recordset &f) {
            if (!s.morvane
                     ->Leer("select TOP 1 tip from TareasAgenda where ida = ? and est = 0 and "
                            "(tip > 0)",
                            f["idm"])
                     .EsNulo())
                return;
            f.Edit();
            f.Put("tarea", false);
            f.Update();
        });
    });
}

// --- The day's summary ---

void pases::ResumenDelDia(Corrida &c)
{
    Sesion &s = c.s;
    c.Intentar([&] {
        const int tareas = s.morvane
                               ->Leer("select count ('dia') as [c] from TareasAgenda where dia = ? "
                                      "and est = 0 and (Tip > 0 or Tip = -47)",
                                      c.hoy)
                               .toInt();
        if (tareas != 0) {
            AgregarPizarra(s, Unir({s(3445), Num(tareas), s(3446)}), 115, 8, 0);
            c.ofrecerResumen = true;
        }
    });
    c.Intentar([&] {
        const int automaticas = s.morvane
                                    ->Leer("select count ('fcreacion') as [b] from TareasAgenda "
                                           "where fcreacion = ? and est = 0 and (Tip < 0 and Tip "
                                           "<> -47)",
                                           c.hoy)
                                    .toInt();
        if (automaticas != 0)
            AgregarPizarra(s, Unir({s(3448), Num(automaticas), s(3449)}), 106, 10, 0);
    });
}

// --- Who keeps appointments ---

void pases::CumplimientoDeTurnos(Corrida &c)
{
    Sesion &s = c.s;
    c.Intentar([&] {
        // Up to and with today, on purpose: what is open this morning counts as not kept, and so
        // do the tasks that this run has just booked.
        Recordset r = s.morvane->OpenSnapshot(
            "select ida, est from TareasAgenda where (tip > 0) and dia between ? and ?",
            c.ultimo.addDays(1), c.hoy);
        c.PorFila(r, [&](const Recordset &f) {
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

void pases::TareasDeAyer(Corrida &c)
{
    c.Intentar([&] {
        const int n = c.s.morvane
                          ->Leer("SELECT COUNT ('dia') as [TareasAyer] FROM TareasAgenda where dia "
                                 "= ? and est = 0 and (Tip > 0 or Tip = -47)",
                                 c.hoy.addDays(-1))
                          .toInt();
        if (n != 0)
            AgregarPizarra(c.s, c.s(5027), 115, 32, 0);
    });
}
