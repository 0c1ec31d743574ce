// Animals in the house: inpatients, guests and reservations.

#include "startup/day_passes.h"

#include "agenda/tasks.h"
#include "board/board_lines.h"
#include "boarding/rations.h"

// --- Inpatients ---

void pases::Internados(Corrida &c)
{
    c.Intentar([&] {
        const int n = c.s.clientes->Leer("select count(*) from mascotas where int = -1").toInt();
        if (n > 0)
            AgregarPizarra(c.s, c.s(9202) + Num(n) + c.s(9203), 0, 0, 0);
    });
}

// --- Kennels ---

namespace
{

void QuitarReservasVencidas(Corrida &c)
{
    Sesion &s = c.s;
    int quitadas = 0;
    Recordset r =
        s.clientes->OpenRecordset("select idm from mhospedaje where fent < ? and tip = 'r'", c.hoy);
    c.PorFila(r, [&](Recordset &f) {
        const int idm = f["idm"].toInt();
        s.clientes->Execute("update Mascotas set hos = 0 where idm = ?", idm);
        c.Intentar([&] {
            s.morvane->Execute(
                "update Perfiles set TurnosNoCumplidos = TurnosNoCumplidos + 1 where idc = ?",
                s.clientes->Leer("select idc from mascotas where idm = ?", idm));
        });
        f.Delete();
        ++quitadas;
    });
    if (quitadas > 0)
        AgregarPizarra(s, Unir({s(3439), Num(quitadas), s(3440)}), 108, 0, 0);
}

} // namespace

void pases::Hospedaje(Corrida &c)
{
    Sesion &s = c.s;
    s.avance.Etapa(s(9205));
    // The rounds are made anew each day.
    c.Intentar(
        [&] { s.morvane->Execute("delete * from TareasAgenda where tip = ?", TipoTarea::Racion); });
    c.Intentar([&] { QuitarReservasVencidas(c); });
    int quedan = 0, cumplidos = 0;
    c.Intentar([&] {
        Recordset r = s.clientes->OpenSnapshot("select fsal from mhospedaje where tip = 'h'");
        c.PorFila(r, [&](const Recordset &f) { ++(f[0].toDate() >= c.hoy ? quedan : cumplidos); });
        if (cumplidos > 0)
            AgregarPizarra(
                s, Unir({s(3441), Num(quedan + cumplidos), s(3442), Num(cumplidos), s(3443)}), 108,
                9, 0);
        else if (quedan > 0)
            AgregarPizarra(s, Unir({s(3441), Num(quedan), s(3442)}), 108, 9, 0);
    });
    c.Intentar([&] {
        if (c.Ajuste("horaracion1").toTime().isValid() && quedan > 0)
            ActualizarRaciones(s, false);
    });
}
