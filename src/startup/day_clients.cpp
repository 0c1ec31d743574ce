// Clients: birthdays of their animals, their debts, and a greeting to new ones.

#include "startup/day_passes.h"

#include "agenda/tasks.h"
#include "board/board_lines.h"
#include "clients/profiles.h"

// --- Birthdays ---

void pases::Cumpleanos(Corrida &c)
{
    Sesion &s = c.s;
    const int medio = Medida(c.Ajuste("MedidasCumple"));
    int cumplen = 0;
    c.Intentar([&] {
        // 29 February rings only in leap years, on purpose: the day and the month must be today's.
        Recordset r = s.clientes->OpenSnapshot(
            "select idm, idc from mascotas where fecn is not null and day(fecn) = ? and "
            "month(fecn) = ? and dec = 0",
            c.hoy.day(), c.hoy.month());
        c.PorFila(r, [&](const Recordset &f) {
            if (medio != 0) {
                const bool destacado = ClienteDestacado(s, f[1].toInt());
                Tarea t;
                t.tip = destacado ? TipoTarea::CumpleanosDestacado : TipoTarea::Cumpleanos;
                t.ida = f[0].toInt();
                t.medio = destacado ? Medio::Correo : medio;
                t.fcreacion = c.hoy;
                AgregarTarea(s, t);
            }
            ++cumplen;
        });
    });
    c.Intentar([&] {
        if (cumplen > 0)
            AgregarPizarra(s, Unir({Num(cumplen), s(medio != 0 ? 3432 : 3433)}), 109, 12,
                           medio != 0 ? 5 : 0);
    });
}

// --- Debtors ---

namespace
{

// The steps of a debt without payments: what each does when its day has come.
struct PasoDeDeuda {
    int men;       // state found
    int diasDeMas; // beyond `diasdeudores`
    int medio;     // of the reminder, 0 for none
    bool cuenta;
};

constexpr PasoDeDeuda PasosDeDeuda[] = {
    {0, 0, Medio::CorreoOCarta, true},
    {1, 10, Medio::CorreoOCarta, true},
    {2, 20, Medio::Carta, true},
    {3, 0, 0, false}, // told three times: it rests
};

} // namespace

void pases::Deudores(Corrida &c)
{
    Sesion &s = c.s;
    s.avance.Etapa(s(3434));
    const int plazo = c.Ajuste("diasdeudores").toInt();
    const int medida = c.Ajuste("MedidasDeudores").toInt();
    const bool recordar = medida == 1 || medida == 3;
    int deudores = 0;
    c.Intentar([&] {
        Recordset r = s.finanzas->OpenRecordset(
            "select idc, fecultpago, men from ctactec where fecultpago <= ? and cancelado = 0",
            c.hoy.addDays(-plazo));
        c.PorFila(r, [&](Recordset &f) {
            const int men = f["men"].toInt(), idc = f["idc"].toInt();
            const qint64 sinPagar = f["fecultpago"].toDate().daysTo(c.hoy);
            for (const PasoDeDeuda &p : PasosDeDeuda) {
                // The first state waits for nothing more: the query has tested its days.
                if (men != p.men || (p.diasDeMas > 0 && sinPagar < plazo + p.diasDeMas))
                    continue;
                if (recordar && p.medio != 0) {
                    Tarea t;
                    t.tip = TipoTarea::RecordatorioDeuda;
                    t.ida = idc;
                    t.dia = c.hoy;
                    t.medio = p.medio;
                    t.fcreacion = c.hoy;
                    t.des = s(3435);
                    AgregarTarea(s, t);
                }
                f.Edit();
                f.Put("men", men + 1);
                f.Update();
                deudores += p.cuenta;
                if (men == 0)
                    s.morvane->Execute(
                        "update perfiles set deudasdemoradas = deudasdemoradas + 1 where idc = ?",
                        idc);
                break;
            }
        });
    });
    c.Intentar([&] {
        if (deudores == 0)
            return;
        QString linea = Unir({s(3418), Num(deudores), s(3436), Num(plazo), s(3437)});
        if (recordar)
            linea = Unir({linea, s(3438)});
        AgregarPizarra(s, linea, 110, 15, recordar ? 5 : 0);
    });
}

// --- New clients ---

void pases::ClientesNuevos(Corrida &c)
{
    Sesion &s = c.s;
    if (c.Ajuste("AutNuevoCliente").toInt() != 1)
        return;
    int saludados = 0;
    c.Intentar([&] {
        Recordset r = s.clientes->OpenSnapshot(
            "SELECT idc FROM Clientes WHERE email IS NOT NULL AND email <> '' AND feci BETWEEN "
            "(DATE()-2) AND DATE()");
        c.PorFila(r, [&](const Recordset &f) {
            if (!s.morvane
                     ->Leer("SELECT TOP 1 Tip FROM TareasAgenda WHERE Tip = ? AND Ida = ?",
                            TipoTarea::NuevoCliente, f[0])
                     .EsNulo())
                return;
            Tarea t;
            t.tip = TipoTarea::NuevoCliente;
            t.ida = f[0].toInt();
            t.dia = c.hoy;
            t.medio = Medio::Correo;
            t.fcreacion = c.hoy;
            t.des = Unir({s(5038), s.clinica.nom});
            AgregarTarea(s, t);
            ++saludados;
        });
    });
    c.Intentar([&] {
        if (saludados > 0)
            AgregarPizarra(s, Unir({s(3430), Num(saludados), s(5039)}), 109, 10, 5);
    });
}
