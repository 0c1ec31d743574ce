#include "startup/daily_automation.h"

#include "agenda/alarms.h"
#include "agenda/tasks.h"
#include "board/board_lines.h"
#include "boarding/rations.h"
#include "clients/contact.h"
#include "clients/profiles.h"
#include "clinical/doses.h"
#include "clinical/food.h"
#include "commerce/categories.h"
#include "startup/news.h"
#include "store/data_folder.h"
#include "store/lookups.h"
#include "store/opening.h"

#include <QSet>

namespace
{

constexpr int Pases = 19;
// Doses of a closed program are caught up for this many days; food is consumed for all of them.
constexpr int DiasQueSeRecuperan = 10;
// How long a terminal waits for another one that is running the day.
constexpr int EsperaDelDia = 600;
// Rows between two signs of life on a long walk.
constexpr int FilasPorAviso = 512;

// `medio` of a task: how the client is reached.
constexpr int PorCorreo = 1, PorCarta = 2, PorCorreoOCarta = 3, PorReparto = 4;
// Option "Nothing" of the reminder and birthday measures.
constexpr int MedidaNada = 4;

// One run of the pass: its days, and what can be told and asked only when it has been written.
struct Corrida {
    Sesion &s;
    QDate hoy = s.reloj.hoy;
    QDate ultimo;
    qint64 dias = 0;
    int pase = 0;
    std::vector<ErrorDeAlmacen> errores;
    bool imprimirPerdidas = false; // the list of missed doses
    bool ofrecerResumen = false;   // the day sheet

    Valor Ajuste(std::string_view columna) const { return s.configuracion[columna]; }

    // A statement that fails is passed over; a disk that fails ends the run.
    template <typename F>
    void Intentar(F &&f)
    {
        try {
            f();
        } catch (const ErrorDeAlmacen &e) {
            if (e.EsDelMedio())
                throw;
            errores.push_back(e);
        }
    }

    // Walks the rows of a recordset, each one tried by itself.
    template <typename F>
    void PorFila(Recordset &r, F &&f)
    {
        for (int n = 0; !r.EOF_(); r.MoveNext()) {
            if (++n % FilasPorAviso == 0)
                s.avance.Barra(pase, Pases);
            Intentar([&] { f(r); });
        }
    }

    // First day whose doses are looked at.
    QDate Desde(int trasElUltimo) const
    {
        return dias > DiasQueSeRecuperan ? hoy.addDays(-DiasQueSeRecuperan)
                                         : ultimo.addDays(trasElUltimo);
    }
};

QString Unir(std::initializer_list<QString> partes) { return QStringList(partes).join(u' '); }

// Some texts of the table bring their point with them.
QString ConPunto(const QString &t) { return t.endsWith(u'.') ? t : t + u'.'; }

QString Num(int n) { return QString::number(n); }

// Reminder and birthday measures are on only as 1, 2 or 3.
int Medida(const Valor &v)
{
    const int n = v.toInt();
    return n >= PorCorreo && n < MedidaNada ? n : 0;
}

// A task that the clinic itself does today: the category's service with the product to bring.
void ReservarServicio(Corrida &c, int idm, int ida, int idcat)
{
    Tarea t;
    t.tip = ServicioDeCategoria(c.s, idcat);
    t.ida = idm;
    t.dia = c.hoy;
    t.hor = BuscarHorarioLibre(c.s, t.tip);
    t.medio = PorReparto;
    t.fcreacion = c.hoy;
    t.artaux = ida;
    t.des = LeerCampo(c.s, "finanzas", "flcategorias", idcat, "nom") + QStringLiteral(" - ")
            + LeerCampo(c.s, "finanzas", "articulos", ida, "nom");
    AgregarTarea(c.s, t);
}

// --- Pass 1: preparation -----------------------------------------------------------------------

void Preparar(Corrida &c)
{
    c.Intentar([&] {
        if (c.s.auxiliar)
            c.s.auxiliar->Execute("delete * from auxrevacunacion");
    });
    c.Intentar([&] { c.s.morvane->Execute("delete * from pizarra"); });
}

// --- Pass 2: food and other consumption --------------------------------------------------------

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
        t.medio = PorCorreo;
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

void Alimentos(Corrida &c)
{
    Sesion &s = c.s;
    s.avance.Etapa(s(3417));
    c.Intentar([&] { s.clientes->Execute("update consumo set FaltaHoy = 0 where FaltaHoy = -1"); });
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

// --- Pass 3: doses missed while the program was closed -----------------------------------------

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

void DosisPerdidas(Corrida &c)
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
    c.imprimirPerdidas = primeras > 0 && listar && s.auxiliar;
}

// --- Pass 4: doses of today --------------------------------------------------------------------

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

void DosisDelDia(Corrida &c)
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
                        t.medio = PorCorreo;
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

// --- Pass 5: dose reminders --------------------------------------------------------------------

void RecordatoriosDeDosis(Corrida &c)
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

// --- Pass 6: birthdays -------------------------------------------------------------------------

void Cumpleanos(Corrida &c)
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
                t.medio = destacado ? PorCorreo : medio;
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

// --- Pass 7: debtors ---------------------------------------------------------------------------

// The steps of a debt without payments: what each does when its day has come.
struct PasoDeDeuda {
    int men;       // state found
    int diasDeMas; // beyond `diasdeudores`
    int medio;     // of the reminder, 0 for none
    bool cuenta;
};
constexpr PasoDeDeuda PasosDeDeuda[] = {
    {0, 0, PorCorreoOCarta, true},
    {1, 10, PorCorreoOCarta, true},
    {2, 20, PorCarta, true},
    {3, 0, 0, false}, // told three times: it rests
};

void Deudores(Corrida &c)
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

// --- Pass 8: inpatients ------------------------------------------------------------------------

void Internados(Corrida &c)
{
    c.Intentar([&] {
        const int n = c.s.clientes->Leer("select count(*) from mascotas where int = -1").toInt();
        if (n > 0)
            AgregarPizarra(
                c.s,
                QStringLiteral("Hay: ") + Num(n)
                    + QStringLiteral(" mascotas internadas. (Listados para mas informacion)"),
                0, 0, 0);
    });
}

// --- Pass 9: kennels ---------------------------------------------------------------------------

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

void Hospedaje(Corrida &c)
{
    Sesion &s = c.s;
    s.avance.Etapa(QStringLiteral("Hospedaje"));
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

// --- Passes 10 and 11: alarms, and the patients' task flag -------------------------------------

void Alarmas(Corrida &c)
{
    c.s.avance.Etapa(c.s(3444));
    c.Intentar([&] { CargarAlarmas(c.s); });
}

void MarcasDeTarea(Corrida &c)
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

// --- Pass 12: the day's summary ----------------------------------------------------------------

void ResumenDelDia(Corrida &c)
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

// --- Pass 13: who keeps appointments -----------------------------------------------------------

void CumplimientoDeTurnos(Corrida &c)
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

// --- Passes 14 to 17: yesterday, housekeeping, greetings, stock --------------------------------

void TareasDeAyer(Corrida &c)
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

void Limpieza(Corrida &c)
{
    c.Intentar(
        [&] { c.s.clientes->Execute("delete * from FichasVisitadas where fec < date() - 30"); });
}

void Saludos(Corrida &c)
{
    const int dia = c.hoy.day(), mes = c.hoy.month();
    c.Intentar([&] {
        if ((dia == 1 && mes == 1) || (dia == 31 && mes == 12))
            AgregarPizarra(c.s, c.s(3450), 106, 0, 0);
        if (dia == 6 && mes == 8)
            AgregarPizarra(c.s, c.s(3451), 106, 0, 0);
    });
}

void Existencias(Corrida &c)
{
    Sesion &s = c.s;
    c.Intentar([&] {
        if (!s.finanzas->Leer("SELECT TOP 1 Ida FROM Articulos WHERE Can < Min").EsNulo())
            AgregarPizarra(s, s(3452), 113, 17, 0);
    });
    c.Intentar([&] {
        if (!s.finanzas
                 ->Leer("SELECT TOP 1 ArtVenc.Ven FROM Articulos LEFT JOIN ArtVenc ON "
                        "Articulos.IDA = ArtVenc.IDA WHERE ArtVenc.Ven <= ?",
                        c.hoy.addDays(30))
                 .EsNulo())
            AgregarPizarra(s, s(3515), 113, 31, 0);
    });
}

// --- Passes 18 and 19: new clients, news -------------------------------------------------------

void ClientesNuevos(Corrida &c)
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
            t.medio = PorCorreo;
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

void Novedades(Corrida &c)
{
    Sesion &s = c.s;
    if (!c.Ajuste("RecibirNotificaciones").toBool())
        return;
    const auto novedad = LeerNovedad(
        s, RutaBajo(CarpetaLocalDeDatos(), QStringLiteral("notificacionesKelvara.txt")));
    if (!novedad || novedad->hasta < c.hoy)
        return;
    try {
        AgregarPizarra(s, novedad->texto, 106, 0, 0);
    } catch (const ErrorDeAlmacen &) {
        // News are worth no message.
    }
}

constexpr void (*LosPases[])(Corrida &) = {
    Preparar,      Alimentos,     DosisPerdidas,        DosisDelDia,  RecordatoriosDeDosis,
    Cumpleanos,    Deudores,      Internados,           Hospedaje,    Alarmas,
    MarcasDeTarea, ResumenDelDia, CumplimientoDeTurnos, TareasDeAyer, Limpieza,
    Saludos,       Existencias,   ClientesNuevos,       Novedades,
};
static_assert(std::size(LosPases) == Pases);

// The first start of the day is the one that finds an earlier last start. A folder whose date was
// lost is run as well: its board would stay empty for ever otherwise.
bool EsPrimerInicio(Sesion &s)
{
    const QDate ultimo = s.configuracion["FechaUltimoInicio"].toDate();
    return !ultimo.isValid() || ultimo < s.reloj.hoy;
}

void AvanzarFechas(Sesion &s)
{
    s.morvane->Execute("update configuracion set FechaInicioAnterior = FechaUltimoInicio");
    s.morvane->Execute("update configuracion set FechaUltimoInicio = ?", s.reloj.hoy);
}

// All passes as one commit, with what @p alFinal adds. A run that is broken off anywhere leaves
// nothing behind, so no stock is consumed twice when the day is run again.
Corrida CorrerPases(Sesion &s, void (*alFinal)(Sesion &))
{
    Corrida c{.s = s, .ultimo = s.configuracion["FechaUltimoInicio"].toDate(), .errores = {}};
    if (!c.ultimo.isValid())
        c.ultimo = c.hoy.addDays(-1);
    c.dias = c.ultimo.daysTo(c.hoy);

    // No database can be opened or closed inside a batch. A scratch file that is of no use, even a
    // damaged one, costs the printed list and not the day.
    try {
        AbrirAuxiliar(s, QStringLiteral("rep97"));
    } catch (const ErrorDeAlmacen &e) {
        c.errores.push_back(e);
    }
    {
        Lote dia(s);
        for (const auto pase : LosPases) {
            s.avance.Barra(c.pase++, Pases);
            c.Intentar([&] { pase(c); });
        }
        if (alFinal)
            alFinal(s);
        dia.Confirmar();
    }
    CerrarAuxiliar(s);
    s.avance.Barra(Pases, Pases);
    return c;
}

// What the run has to say and to ask, once it is written and no other terminal waits for it.
void Informar(const Corrida &c)
{
    Sesion &s = c.s;
    const QString fuente = QStringLiteral("Tareas de Inicio. ");
    // Each failure is logged; one that struck many rows is told once.
    QSet<QString> dichos;
    std::vector<const ErrorDeAlmacen *> repetidos;
    for (const ErrorDeAlmacen &e : c.errores) {
        if (dichos.contains(e.descripcion)) {
            repetidos.push_back(&e);
            continue;
        }
        dichos.insert(e.descripcion);
        RegistrarError(s, e.numero, e.descripcion, fuente);
    }
    Lote lote(s);
    for (const ErrorDeAlmacen *e : repetidos)
        AnotarError(s, e->numero, e->descripcion, fuente);
    lote.Confirmar();
    if (c.imprimirPerdidas)
        s.impresion.Informe(QStringLiteral("vac"));
    if (c.ofrecerResumen && s.impresion.Disponible() && s.dialogos.Pregunta(s(3447)))
        s.impresion.AgendaDelDia(true, c.hoy, {});
}

// Only the number of the month is compared, on purpose: exactly twelve months later nothing runs.
bool EsMesNuevo(Sesion &s)
{
    return s.configuracion["FechaUltimoInicioMes"].toDate().month() != s.reloj.hoy.month();
}

// Only behind the lock is it known whether another terminal has done the work meanwhile. A lock
// that cannot be had is told: the clinic must not believe in a board of yesterday.
template <typename F>
bool BajoElBloqueo(Sesion &s, bool (*pendiente)(Sesion &), F &&trabajo)
{
    const BloqueoDeCarpeta dia(s.carpetaDeDatos, QStringLiteral("kelvara.dia"), EsperaDelDia,
                               [&s, dicho = false]() mutable {
                                   if (!std::exchange(dicho, true))
                                       s.avance.Etapa(s(9008));
                                   s.avance.Barra(0, Pases);
                               });
    if (!dia.Tomado())
        throw ErrorDeAlmacen(ErrorNum::Bloqueada, s(9004));
    s.configuracion.Requery();
    if (!pendiente(s))
        return false;
    trabajo();
    return true;
}

bool CorrerElDia(Sesion &s)
{
    std::optional<Corrida> corrida;
    BajoElBloqueo(s, EsPrimerInicio, [&] { corrida.emplace(CorrerPases(s, AvanzarFechas)); });
    if (corrida)
        Informar(*corrida);
    return corrida.has_value();
}

bool CorrerElMes(Sesion &s, const PasosPosteriores &pasos)
{
    return BajoElBloqueo(s, EsMesNuevo, [&] {
        if (pasos.pasoMensual)
            pasos.pasoMensual(s);
        s.morvane->Execute("UPDATE Configuracion set FechaUltimoInicioMes = ?", s.reloj.hoy);
    });
}

} // namespace

void TareasDeInicio(Sesion &s) { Informar(CorrerPases(s, nullptr)); }

bool IniciarTareas(Sesion &s, const PasosPosteriores &pasos)
{
    bool corrido = false;
    try {
        corrido = EsPrimerInicio(s) && CorrerElDia(s);
    } catch (const ErrorDeAlmacen &) {
        CargarAlarmas(s); // the appointments stand, whatever became of the pass
        throw;
    }
    if (corrido) {
        s.avance.Etapa(s(3415));
        if (pasos.enviarMensajes)
            pasos.enviarMensajes(s, s.reloj.hoy);
    } else {
        // A second start of the day rings the alarms as well.
        CargarAlarmas(s);
    }

    s.avance.Etapa(s(3416));
    if (EsMesNuevo(s) && CorrerElMes(s, pasos) && pasos.enviarMensajes)
        pasos.enviarMensajes(s, s.reloj.hoy);
    return corrido;
}
