// Food and other consumption: what every day takes from the stocks, and who runs out.

#include "startup/day_passes.h"

#include "agenda/tasks.h"
#include "board/board_lines.h"
#include "clinical/food.h"

namespace
{

struct Faltantes {
    int conServicio = 0;
    int sinServicio = 0;
};

void AvisarFalta(Corrida &c, const Recordset &r, Faltantes &faltantes)
{
    const int idm = r["idm"].toInt(), ida = r["ida"].toInt();
    if (r["ser"].toInt() > 0) {
        ++faltantes.conServicio;
        ReservarServicio(c, idm, ida, r["IdCat"].toInt());
        return;
    }
    ++faltantes.sinServicio;
    if (c.Ajuste("AlimentoMail").toBool()) {
        Tarea t;
        t.tip = TipoTarea::FaltaAlimento;
        t.ida = idm;
        t.dia = c.hoy;
        t.medio = Medio::Correo;
        t.fcreacion = c.hoy;
        t.artaux = ida;
        AgregarTarea(c.s, t);
    }
}

// Consumes a patient's stock for every day since the last start; the warning is given once.
void Consumir(Corrida &c, Recordset &r, Faltantes &faltantes, bool conAvisos)
{
    Moneda can = r["can"].toMoneda();
    const Moneda con = r["Con"].toMoneda();
    const double limite =
        UmbralAlimento(c.s, r["esp"].toInt(), r["pes"].toDouble(), r["IdCat"].toInt());
    bool avisado = r["men"].toBool();
    bool falta = false;
    for (qint64 d = 0; d < c.dias; ++d) {
        const Moneda ayer = can;
        can = can - con;
        if (!avisado && can.ADoble() <= limite) {
            falta = conAvisos;
            avisado = true;
        }
        can = std::max(can, Moneda());
        if (can == ayer)
            break; // so are all days to come
    }
    // A task that cannot be written leaves the stock to be consumed all the same.
    if (falta)
        c.Intentar([&] { AvisarFalta(c, r, faltantes); });
    r.Edit();
    r.Put("can", can);
    r.Put("men", avisado);
    if (falta)
        r.Put("FaltaHoy", true);
    r.Update();
}

} // namespace

void pases::Alimentos(Corrida &c)
{
    Sesion &s = c.s;
    s.avance.Etapa(s(3417));
    c.Intentar([&] { s.clientes->Execute("update consumo set FaltaHoy = 0 where FaltaHoy <> 0"); });
    const bool conAvisos = c.Ajuste("medidasalimento").toInt() != 0;
    const bool ofertas = c.Ajuste("AlimentoMail").toBool();
    Faltantes faltantes;
    c.Intentar([&] {
        Recordset r = s.clientes->OpenRecordset(
            "select consumo.idm, consumo.IdCat, consumo.ida, consumo.can, consumo.Con, "
            "consumo.men, consumo.FaltaHoy, mascotas.esp, mascotas.pes, mascotas.ser from consumo "
            "inner join mascotas on consumo.idm = mascotas.idm where can > 0 and mascotas.dec = 0");
        c.PorFila(r, [&](Recordset &fila) { Consumir(c, fila, faltantes, conAvisos); });
    });
    c.Intentar([&] {
        if (faltantes.conServicio > 0)
            AgregarPizarra(s, Unir({s(3418), Num(faltantes.conServicio), s(3419)}), 107, 2, 8);
        if (faltantes.sinServicio > 0) {
            QString linea = Unir({s(3418), Num(faltantes.sinServicio), s(3420)});
            if (ofertas)
                linea = Unir({linea, s(3421)});
            AgregarPizarra(s, linea, ofertas ? 109 : 107, 1, ofertas ? 5 : 0);
        }
    });
}
