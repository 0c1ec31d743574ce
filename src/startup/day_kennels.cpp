// Animals staying at the clinic: inpatients, guests and reservations.

#include "startup/day_passes.h"

#include "agenda/tasks.h"
#include "board/board_lines.h"
#include "boarding/rations.h"
#include "columns/configuracion.h"
#include "texts/texts.h"

using namespace startup;
using namespace board;

// --- Inpatients ---

void passes::inpatients(DayRun &c)
{
    c.attempt([&] {
        const int n = c.s.clientes->read("select count(*) from mascotas where int = -1").toInt();
        if (n > 0)
            AgregarPizarra(c.s,
                           c.s(text::PatientsInCare) + numberText(n) + c.s(text::PatientsInCareEnd),
                           picture::None);
    });
}

// --- Kennels ---

namespace
{

void removeExpiredReservations(DayRun &c)
{
    Sesion &s = c.s;
    int removed = 0;
    Recordset r =
        s.clientes->OpenRecordset("select idm from mhospedaje where fent < ? and tip = 'r'", c.hoy);
    c.forEachRow(r, [&](Recordset &f) {
        const int idm = f["idm"].toInt();
        s.clientes->Execute("update Mascotas set hos = 0 where idm = ?", idm);
        c.attempt([&] {
            s.morvane->Execute(
                "update Perfiles set TurnosNoCumplidos = TurnosNoCumplidos + 1 where idc = ?",
                s.clientes->read("select idc from mascotas where idm = ?", idm));
        });
        f.Delete();
        ++removed;
    });
    if (removed > 0)
        AgregarPizarra(s, joined({s(text::Removed), numberText(removed), s(text::ReservesRemoved)}),
                       picture::Boarding);
}

} // namespace

void passes::guests(DayRun &c)
{
    Sesion &s = c.s;
    s.progress.tellStage(s(text::CheckingBoarding));
    // The feeding rounds are written afresh each day.
    c.attempt([&] {
        s.morvane->Execute("delete * from TareasAgenda where tip = ?", agenda::TaskKind::Ration);
    });
    c.attempt([&] { removeExpiredReservations(c); });
    int remaining = 0, over = 0;
    c.attempt([&] {
        Recordset r = s.clientes->OpenSnapshot("select fsal from mhospedaje where tip = 'h'");
        c.forEachRow(r, [&](const Recordset &f) { ++(f[0].toDate() >= c.hoy ? remaining : over); });
        if (over > 0)
            AgregarPizarra(s,
                           joined({s(text::CurrentlyThere), numberText(remaining + over),
                                   s(text::HostedPets), numberText(over), s(text::StayCompleted)}),
                           picture::Boarding, click::ListGuests);
        else if (remaining > 0)
            AgregarPizarra(
                s, joined({s(text::CurrentlyThere), numberText(remaining), s(text::HostedPets)}),
                picture::Boarding, click::ListGuests);
    });
    c.attempt([&] {
        if (c.setting(setting::horaracion1).toTime().isValid() && remaining > 0)
            ActualizarRaciones(s, false);
    });
}
