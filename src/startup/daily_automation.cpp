#include "startup/daily_automation.h"

#include "agenda/alarms.h"
#include "agenda/day_sheet.h"
#include "board/board_lines.h"
#include "printing/report.h"
#include "startup/day_passes.h"
#include "startup/news.h"
#include "store/data_folder.h"
#include "store/lookups.h"
#include "store/opening.h"

#include <QFile>
#include <QSaveFile>
#include <QSet>

namespace
{

// How long a terminal waits for another one that is running the day, in seconds.
constexpr int EsperaDelDia = 600;

// --- The short passes ---

void Preparar(Corrida &c)
{
    c.Intentar([&] {
        if (c.s.auxiliar)
            c.s.auxiliar->Execute("delete * from auxrevacunacion");
    });
    c.Intentar([&] { c.s.morvane->Execute("delete * from pizarra"); });
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
    } catch (const ErrorDeAlmacen &e) {
        // News are worth no message; a disk that fails is.
        if (e.EsDelMedio())
            throw;
    }
}

// --- The run ---

constexpr void (*LosPases[])(Corrida &) = {
    Preparar,
    pases::Alimentos,
    pases::DosisPerdidas,
    pases::DosisDelDia,
    pases::RecordatoriosDeDosis,
    pases::Cumpleanos,
    pases::Deudores,
    pases::Internados,
    pases::Hospedaje,
    pases::Alarmas,
    pases::MarcasDeTarea,
    pases::ResumenDelDia,
    pases::CumplimientoDeTurnos,
    pases::TareasDeAyer,
    Limpieza,
    Saludos,
    Existencias,
    pases::ClientesNuevos,
    Novedades,
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
    // The scratch file is every terminal's: laid out here, the list is this run's.
    if (c.listarPerdidas) {
        try {
            c.perdidas = CorrerInforme(s, QStringLiteral("vac"));
        } catch (const ErrorDeAlmacen &e) {
            c.errores.push_back(e);
        }
    }
    s.avance.Barra(Pases, Pases);
    return c;
}

// In one batch, for a failure may have struck thousands of rows. A log that cannot be written costs
// nothing else.
void AnotarTodos(Sesion &s, const std::vector<const ErrorDeAlmacen *> &errores,
                 const QString &fuente)
{
    if (errores.empty())
        return;
    try {
        Lote lote(s);
        for (const ErrorDeAlmacen *e : errores)
            AnotarError(s, e->numero, e->descripcion, fuente);
        lote.Confirmar();
    } catch (const ErrorDeAlmacen &) {
        return;
    }
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
    AnotarTodos(s, repetidos, fuente);
    if (c.perdidas)
        ImprimirODecir(s, *c.perdidas);
    if (c.ofrecerResumen && s.dialogos.Pregunta(s(3447)))
        ImprimirAgendaDia(s, true, c.hoy, {});
}

// Only the number of the month is compared, on purpose: exactly twelve months later nothing runs.
bool EsMesNuevo(Sesion &s)
{
    return s.configuracion["FechaUltimoInicioMes"].toDate().month() != s.reloj.hoy.month();
}

BloqueoDeCarpeta Bloquear(Sesion &s)
{
    return {s.carpetaDeDatos, QStringLiteral("kelvara.dia"), EsperaDelDia,
            [&s, dicho = false]() mutable {
                if (!std::exchange(dicho, true))
                    s.avance.Etapa(s(9008));
                s.avance.Barra(0, Pases);
            }};
}

// Only behind the lock is it known whether another terminal has done the work meanwhile. A lock
// that cannot be had is told: the clinic must not believe in a board of yesterday.
template <typename F>
bool BajoElBloqueo(Sesion &s, bool (*pendiente)(Sesion &), F &&trabajo)
{
    const BloqueoDeCarpeta dia = Bloquear(s);
    if (!dia.Tomado())
        throw ErrorDeAlmacen(ErrorNum::Bloqueada, s(9004));
    s.configuracion.Requery();
    if (!pendiente(s))
        return false;
    trabajo();
    return true;
}

// --- The outbox ---

// A file beside the databases holds the day whose outbox is due. It is made before the commit that
// the outbox follows and goes when all is sent: whatever a program dies of in between, the next
// start of the day sends the rest. What an earlier day left is not sent, since each run looks at
// its own day alone.
QString MarcaDeEnvio(const Sesion &s)
{
    return RutaBajo(s.carpetaDeDatos, QStringLiteral("kelvara.envio"));
}

QByteArray EsteDia(const Sesion &s) { return s.reloj.hoy.toString(Qt::ISODate).toLatin1(); }

void Marcar(const Sesion &s)
{
    QSaveFile marca(MarcaDeEnvio(s));
    const QByteArray dia = EsteDia(s);
    if (!marca.open(QIODevice::WriteOnly) || marca.write(dia) != dia.size() || !marca.flush()
        || !marca.commit())
        throw ErrorDeAlmacen(ErrorNum::RutaODisco, marca.fileName());
}

bool HayEnvio(const Sesion &s)
{
    QFile marca(MarcaDeEnvio(s));
    return marca.open(QIODevice::ReadOnly) && marca.readAll() == EsteDia(s);
}

// Another terminal may have begun the next day meanwhile, whose mark this is not to take away.
void Desmarcar(const Sesion &s)
{
    QFile marca(MarcaDeEnvio(s));
    if (HayEnvio(s) && !marca.remove())
        throw ErrorDeAlmacen(ErrorNum::RutaODisco, marca.fileName());
}

// @return false when another terminal is sending
bool Enviar(Sesion &s, const PasosPosteriores &pasos)
{
    if (!pasos.enviarMensajes || !HayEnvio(s))
        return true;
    s.configuracion.Requery();
    if (!pasos.enviarMensajes(s, s.reloj.hoy))
        return false;
    Desmarcar(s);
    return true;
}

// --- Day and month ---

bool CorrerElDia(Sesion &s, const PasosPosteriores &pasos)
{
    std::optional<Corrida> corrida;
    BajoElBloqueo(s, EsPrimerInicio, [&] {
        if (pasos.enviarMensajes)
            Marcar(s);
        corrida.emplace(CorrerPases(s, AvanzarFechas));
    });
    if (corrida)
        Informar(*corrida);
    return corrida.has_value();
}

void CorrerElMes(Sesion &s, const PasosPosteriores &pasos)
{
    BajoElBloqueo(s, EsMesNuevo, [&] {
        if (pasos.enviarMensajes)
            Marcar(s);
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
        corrido = EsPrimerInicio(s) && CorrerElDia(s, pasos);
    } catch (const ErrorDeAlmacen &) {
        CargarAlarmas(s); // the appointments stand, whatever became of the pass
        throw;
    }
    // A second start of the day rings the alarms as well.
    if (!corrido)
        CargarAlarmas(s);

    if (corrido || HayEnvio(s))
        s.avance.Etapa(s(3415));
    const bool libre = Enviar(s, pasos);

    s.avance.Etapa(s(3416));
    // The terminal that is sending goes on to the month itself.
    if (pasos.pasoMensual && libre && EsMesNuevo(s)) {
        CorrerElMes(s, pasos);
        Enviar(s, pasos);
    }
    return corrido;
}
