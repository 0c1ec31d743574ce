// Doses: those missed while the program was closed, those of today, and the reminders.

#include "startup/day_passes.h"

#include "agenda/tasks.h"
#include "board/board_lines.h"
#include "clinical/doses.h"
#include "contact/contact.h"
#include "store/lookups.h"

// --- Doses missed while the program was closed ---

namespace
{

void AnotarParaLista(Corrida &c, int idm, int idc, int ida, int dos)
{
    Sesion &s = c.s;
    if (!s.auxiliar)
        return;
    const auto cortar = [&s](const char *columna, const QString &t) {
        return s.auxiliar->Recortado("auxrevacunacion", columna, t);
    };
    s.auxiliar->Execute(
        "insert into auxrevacunacion (mas, vac, pro, dir, tel, dos) values (?, ?, ?, ?, ?, ?)",
        cortar("mas", LeerCampo(s, "clientes", "mascotas", idm, "nom")),
        cortar("vac", LeerCampo(s, "finanzas", "articulos", ida, "nom")),
        cortar("pro", LeerCampo(s, "clientes", "clientes", idc, "ayn")),
        cortar("dir", DomicilioCliente(s, idc)), cortar("tel", TelefonosCliente(s, idc)), dos);
}

} // namespace

void pases::DosisPerdidas(Corrida &c)
{
    Sesion &s = c.s;
    s.avance.Etapa(s(3422));
    const bool listar = c.Ajuste("LVMascotas").toBool();
    int primeras = 0, segundas = 0, conServicio = 0;
    c.Intentar([&] {
        Recordset r = s.clientes->OpenSnapshot(
            "SELECT ArtPlan.idm, ArtPlan.ida, ArtPlan.dos, ArtPlan.IdCat, Mascotas.ser, "
            "Mascotas.idc FROM ArtPlan INNER JOIN Mascotas ON ArtPlan.Idm = Mascotas.Idm WHERE "
            "(ArtPlan.Si = 0 or ArtPlan.Si = 2) and ArtPlan.Rep BETWEEN ? AND ? and "
            "Mascotas.dec = 0 ORDER BY ArtPlan.Idm",
            c.Desde(0), c.hoy.addDays(-1));
        c.PorFila(r, [&](const Recordset &f) {
            const int idm = f[0].toInt(), ida = f[1].toInt(), dos = f[2].toInt();
            if (f[4].toInt() == 0) {
                const int n = ContarDosisAtrasadas(s, idm, ida, dos, f[3].toInt());
                primeras += n == 0;
                segundas += n == 1;
            } else {
                ++conServicio;
            }
            if (listar)
                AnotarParaLista(c, idm, f[5].toInt(), ida, dos);
        });
    });
    c.Intentar([&] {
        if (primeras > 0)
            AgregarPizarra(s, ConPunto(Unir({s(3423), Num(primeras), s(3424)})), 103, 6, 18);
        if (segundas > 0)
            AgregarPizarra(s, ConPunto(Unir({s(3423), Num(segundas), s(3425)})), 103, 14, 18);
        if (conServicio > 0)
            AgregarPizarra(s, ConPunto(Unir({s(3423), Num(conServicio), s(3426)})), 103, 7, 19);
    });
    c.listarPerdidas = primeras > 0 && listar && s.auxiliar;
}

// --- Doses of today ---

namespace
{

struct DosisDeHoy {
    int alDia = 0;     // clients without service, nothing overdue
    int atrasadas = 0; // the same with overdue doses
    int segundas = 0;  // second overdue dose, a message goes out
    int conServicio = 0;
};

void LineaDeDosis(Corrida &c, const DosisDeHoy &d, bool descontinuadas)
{
    Sesion &s = c.s;
    const auto linea = [&s](const QString &texto, int dibujo, int codigo1, int codigo2) {
        AgregarPizarra(s, texto, dibujo, codigo1, codigo2);
    };
    if (d.conServicio > 0)
        linea(Unir({s(3427), Num(d.conServicio), s(3426)}), 104, 4, 21);

    const QString primeras = Unir({s(3427), Num(d.alDia), s(3424)});
    const QString ambas = ConPunto(Unir({primeras, s(36), Num(d.atrasadas), s(3425)}));
    const QString atrasadas = ConPunto(Unir({s(3427), Num(d.atrasadas), s(3425)}));
    const QString mensajes = Unir({Num(d.segundas), s(3428)});
    if (d.alDia > 0 && d.atrasadas > 0) {
        if (!descontinuadas)
            linea(ambas, 102, 3, 20);
        else if (d.segundas != 0)
            linea(Unir({ambas, mensajes}), 102, 3, 5);
        else
            linea(Unir({ambas, s(3429)}), 102, 3, 20);
    } else if (d.alDia > 0) {
        linea(ConPunto(primeras), 102, 3, 20);
    } else if (d.atrasadas > 0) {
        if (!descontinuadas)
            linea(atrasadas, 103, 14, 0);
        else if (d.segundas != 0)
            linea(Unir({atrasadas, mensajes}), 109, 14, 5);
        else
            linea(Unir({atrasadas, s(3429)}), 103, 3, 20);
    }
}

} // namespace

void pases::DosisDelDia(Corrida &c)
{
    Sesion &s = c.s;
    // On as 1 and as -1, the two ways in which a Yes was ever stored.
    const int ajuste = c.Ajuste("MedidasRevacDescont").toInt();
    const bool descontinuadas = ajuste == 1 || ajuste == -1;
    DosisDeHoy d;
    for (QDate dia = c.Desde(1); dia <= c.hoy; dia = dia.addDays(1)) {
        c.Intentar([&] {
            Recordset r = s.clientes->OpenSnapshot(
                "select ArtPlan.idm, ArtPlan.ida, ArtPlan.dos, ArtPlan.IdCat, mascotas.ser from "
                "ArtPlan inner join mascotas on mascotas.idm = ArtPlan.idm where ArtPlan.rep = ? "
                "and (ArtPlan.si = 0 or ArtPlan.si = 2) and mascotas.dec = 0",
                dia);
            c.PorFila(r, [&](const Recordset &f) {
                const int idm = f[0].toInt(), ida = f[1].toInt(), dos = f[2].toInt(),
                          idcat = f[3].toInt(), ser = f[4].toInt();
                if (dia == c.hoy && ser == 0) {
                    const int n = ContarDosisAtrasadas(s, idm, ida, dos, idcat);
                    d.alDia += n == 0;
                    d.atrasadas += n > 0;
                    if (descontinuadas && n == 1) {
                        Tarea t;
                        t.tip = TipoTarea::DosisDiscontinuada;
                        t.ida = idm;
                        t.medio = Medio::Correo;
                        t.fcreacion = c.hoy;
                        t.artaux = ida;
                        t.des = s(5035);
                        AgregarTarea(s, t);
                        ++d.segundas;
                    }
                }
                if (ser > 0) {
                    // A dose of a closed day is booked for today.
                    ReservarServicio(c, idm, ida, idcat);
                    ++d.conServicio;
                }
            });
        });
    }
    c.Intentar([&] { LineaDeDosis(c, d, descontinuadas); });
}

// --- Dose reminders ---

void pases::RecordatoriosDeDosis(Corrida &c)
{
    Sesion &s = c.s;
    const int medio = Medida(c.Ajuste("MedidasRevac"));
    if (medio == 0)
        return;
    const int anticipacion = c.Ajuste("tiempovencimiento").toInt();
    int enviar = 0;
    for (QDate dia = c.Desde(1); dia <= c.hoy; dia = dia.addDays(1)) {
        c.Intentar([&] {
            Recordset r = s.clientes->OpenSnapshot(
                "select ArtPlan.idm, ArtPlan.ida, ArtPlan.dos, ArtPlan.IdCat from ArtPlan inner "
                "join mascotas on mascotas.idm = ArtPlan.idm where ArtPlan.rep = ? and (ArtPlan.si "
                "= 0 or ArtPlan.si = 2) and (mascotas.ser = 0) and Ana = 0 and mascotas.dec = 0",
                dia.addDays(anticipacion));
            c.PorFila(r, [&](const Recordset &f) {
                const int idm = f[0].toInt(), ida = f[1].toInt(), dos = f[2].toInt();
                if (ContarDosisAtrasadas(s, idm, ida, dos, f[3].toInt()) != 0)
                    return;
                Tarea t;
                t.tip = TipoTarea::RecordatorioDosis;
                t.ida = idm;
                t.medio = medio;
                t.fcreacion = c.hoy;
                t.artaux = ida;
                t.des = Num(dos); // the outbox finds the dose by it
                AgregarTarea(s, t);
                ++enviar;
            });
        });
    }
    c.Intentar([&] {
        if (enviar > 0)
            AgregarPizarra(s, Unir({s(3430), Num(enviar), s(3431)}), 109, 13, 5);
    });
}
