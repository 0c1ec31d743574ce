#include "boarding/rations.h"

#include "agenda/day_sheet.h"
#include "agenda/tasks.h"

void ActualizarRaciones(Sesion &s, bool preguntar)
{
    const Recordset huespedes = s.clientes->OpenSnapshot(
        "select * from mhospedaje where tip = 'h' and fsal >= ?", s.reloj.hoy);
    if (huespedes.RecordCount() != 1)
        return;

    const char *const columnas[] = {"horaracion1", "horaracion2", "horaracion3", "horaracion4"};
    std::vector<QTime> horas;
    for (const char *c : columnas)
        horas.push_back(s.configuracion[c].toTime());
    while (!horas.empty() && !horas.back().isValid())
        horas.pop_back();

    Lote lote(s);
    // The highest ration first. A gap below it gives a round without an hour: lower ones are not
    // tested, on purpose.
    for (auto h = horas.rbegin(); h != horas.rend(); ++h) {
        Tarea t;
        t.tip = TipoTarea::Racion;
        t.dia = s.reloj.hoy;
        t.hor = *h;
        t.ala = *h;
        t.fcreacion = s.reloj.hoy;
        AgregarTarea(s, t);
    }
    lote.Confirmar();

    if (preguntar && !horas.empty() && s.dialogos.Pregunta(s(4605)))
        for (QTime h : horas)
            ImprimirAgendaDia(s, false, s.reloj.hoy, h);
}
