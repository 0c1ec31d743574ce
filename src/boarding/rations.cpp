#include "boarding/rations.h"

#include "agenda/day_sheet.h"
#include "agenda/tasks.h"
#include "columns/configuracion.h"
#include "texts/texts.h"

void ActualizarRaciones(Sesion &s, bool ask)
{
    const Recordset guests = s.clientes->OpenSnapshot(
        "select * from mhospedaje where tip = 'h' and fsal >= ?", s.reloj.hoy);
    if (guests.RecordCount() != 1)
        return;

    static constexpr std::string_view columns[] = {setting::horaracion1, setting::horaracion2,
                                                   setting::horaracion3, setting::horaracion4};
    std::vector<QTime> hours;
    for (const std::string_view c : columns)
        hours.push_back(s.configuracion[c].toTime());
    while (!hours.empty() && !hours.back().isValid())
        hours.pop_back();

    Lote lote(s);
    // From the highest round that has an hour downwards.
    // On purpose: the lower ones are not checked, so a gap gives a round without an hour.
    for (auto h = hours.rbegin(); h != hours.rend(); ++h) {
        agenda::Task t;
        t.tip = agenda::TaskKind::Ration;
        t.dia = s.reloj.hoy;
        t.hor = *h;
        t.ala = *h;
        t.fcreacion = s.reloj.hoy;
        AgregarTarea(s, t);
    }
    lote.commit();

    if (ask && !hours.empty() && s.dialogos.Pregunta(s(text::UpdateAgendaQuestion)))
        for (QTime h : hours)
            ImprimirAgendaDia(s, false, s.reloj.hoy, h);
}
