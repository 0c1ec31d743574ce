#include "startup/daily_automation.h"

#include "agenda/alarms.h"
#include "agenda/day_sheet.h"
#include "board/board_lines.h"
#include "columns/configuracion.h"
#include "printing/report.h"
#include "startup/day_passes.h"
#include "startup/news.h"
#include "store/data_folder.h"
#include "store/lookups.h"
#include "store/opening.h"
#include "store/upkeep.h"
#include "texts/texts.h"

#include <QFile>
#include <QSaveFile>
#include <QSet>

using namespace startup;
using namespace board;

namespace
{

// --- The short passes ---

void prepare(DayRun &c)
{
    c.attempt([&] { c.s.rep97->Execute("delete * from auxrevacunacion"); });
    c.attempt([&] { c.s.morvane->Execute("delete * from pizarra"); });
}

void Cleaning(DayRun &c)
{
    c.attempt(
        [&] { c.s.clientes->Execute("delete * from FichasVisitadas where fec < date() - 30"); });
}

void greetings(DayRun &c)
{
    const int dia = c.hoy.day(), mes = c.hoy.month();
    c.attempt([&] {
        if ((dia == 1 && mes == 1) || (dia == 31 && mes == 12))
            AgregarPizarra(c.s, c.s(text::HappyNewYear), picture::News);
        if (dia == 6 && mes == 8)
            AgregarPizarra(c.s, c.s(text::HappyVeterinarianDay), picture::News);
    });
}

void stock(DayRun &c)
{
    Sesion &s = c.s;
    c.attempt([&] {
        if (!s.finanzas->read("SELECT TOP 1 Ida FROM Articulos WHERE Can < Min").isNull())
            AgregarPizarra(s, s(text::ProductsBelowMinimum), picture::Stock,
                           click::ListBelowMinimum);
    });
    c.attempt([&] {
        if (!s.finanzas
                 ->read("SELECT TOP 1 ArtVenc.Ven FROM Articulos LEFT JOIN ArtVenc ON "
                        "Articulos.IDA = ArtVenc.IDA WHERE ArtVenc.Ven <= ?",
                        c.hoy.addDays(30))
                 .isNull())
            AgregarPizarra(s, s(text::ProductsAboutToExpire), picture::Stock, click::ListExpired);
    });
}

void newsOf(DayRun &c)
{
    Sesion &s = c.s;
    if (!c.setting(setting::RecibirNotificaciones).toBool())
        return;
    const auto newsItem = readNewsItem(
        s, store::pathUnder(CarpetaLocalDeDatos(), QStringLiteral("notificacionesKelvara.txt")));
    if (!newsItem || newsItem->until < c.hoy)
        return;
    // News are worth no message; a disk that fails is.
    store::attempt(s, [&] { AgregarPizarra(s, newsItem->text, picture::News); });
}

// --- The run ---

constexpr void (*AllPasses[])(DayRun &) = {
    prepare,
    passes::foodStock,
    passes::missedDoses,
    passes::dosesOfTheDay,
    passes::doseReminders,
    passes::birthday,
    passes::debtors,
    passes::inpatients,
    passes::guests,
    passes::Alarmas,
    passes::taskMarks,
    passes::daySummary,
    passes::keptAppointments,
    passes::yesterdayTasks,
    Cleaning,
    greetings,
    stock,
    passes::newClients,
    newsOf,
};
static_assert(std::size(AllPasses) == PassCount);

// The first start of the day is the one that finds an earlier last start. A folder whose date was
// lost is run as well: its board would stay empty for ever otherwise.
bool isFirstStart(Sesion &s)
{
    const QDate last = s.configuracion[setting::FechaUltimoInicio].toDate();
    return !last.isValid() || last < s.reloj.hoy;
}

void advanceDates(Sesion &s)
{
    s.morvane->Execute("update configuracion set FechaInicioAnterior = FechaUltimoInicio");
    s.morvane->Execute("update configuracion set FechaUltimoInicio = ?", s.reloj.hoy);
}

DayRun beginRun(Sesion &s)
{
    DayRun c{.s = s, .last = s.configuracion[setting::FechaUltimoInicio].toDate(), .errores = {}};
    if (!c.last.isValid())
        c.last = c.hoy.addDays(-1);
    c.days = c.last.daysTo(c.hoy);
    return c;
}

// All passes as one commit, with what @p atEnd adds. A run that is broken off anywhere leaves
// nothing behind, so no stock is consumed twice when the day is run again.
DayRun runPasses(Sesion &s, void (*atEnd)(Sesion &))
{
    std::optional<DayRun> run;
    store::runBatch(s, [&] {
        run.emplace(beginRun(s));
        for (const auto pass : AllPasses) {
            s.progress.tellBar(run->pass++, PassCount);
            run->attempt([&] { pass(*run); });
        }
        if (atEnd)
            atEnd(s);
    });
    DayRun c = *std::move(run);
    if (c.listMissed) {
        try {
            c.missed = printing::runReport(s, QStringLiteral("vac"));
        } catch (const store::StoreError &e) {
            c.errores.push_back(e);
        }
    }
    s.progress.tellBar(PassCount, PassCount);
    return c;
}

// In one batch, for a failure may have struck thousands of rows. A log that cannot be written costs
// nothing else.
void logAll(Sesion &s, const std::vector<const store::StoreError *> &errores, const QString &source)
{
    if (errores.empty())
        return;
    try {
        Lote lote(s);
        for (const store::StoreError *e : errores)
            store::logError(s, e->number, e->description, source);
        lote.commit();
    } catch (const store::StoreError &) {
        return;
    }
}

// What the run has to say and to ask, once it is written and no other terminal waits for it.
void report(const DayRun &c)
{
    Sesion &s = c.s;
    const QString source = QStringLiteral("Tareas de Inicio. ");
    // Each failure is logged; one that struck many rows is told once.
    QSet<QString> told;
    std::vector<const store::StoreError *> repeated;
    for (const store::StoreError &e : c.errores) {
        if (told.contains(e.description)) {
            repeated.push_back(&e);
            continue;
        }
        told.insert(e.description);
        RegistrarError(s, e.number, e.description, source);
    }
    logAll(s, repeated, source);
    if (c.missed)
        printing::printOrTell(s, *c.missed);
    if (c.offerSummary && s.dialogos.Pregunta(s(text::PrintDayQuestion)))
        ImprimirAgendaDia(s, true, c.hoy, {});
}

// Only the number of the month is compared, on purpose: exactly twelve months later nothing runs.
bool isNewMonth(Sesion &s)
{
    return s.configuracion[setting::FechaUltimoInicioMes].toDate().month() != s.reloj.hoy.month();
}

std::unique_ptr<store::Lock> lock(Sesion &s)
{
    return s.motor->lock(QStringLiteral("kelvara.dia"), store::StartPatienceMs / 1000,
                         [&s, told = QString()](const QString &holder) mutable {
                             QString text = s(text::AnotherTerminalRunsTheDay);
                             if (!holder.isEmpty())
                                 text += u' ' + s(text::HeldBy).arg(holder);
                             if (std::exchange(told, text) != text)
                                 s.progress.tellStage(text);
                             s.progress.tellBar(0, PassCount);
                         });
}

// Only behind the lock is it known whether another terminal has done the work meanwhile. A lock
// that cannot be had is told: the clinic must not believe in a board of yesterday.
template <typename F>
bool underLock(Sesion &s, bool (*pending)(Sesion &), F &&work)
{
    const auto dia = lock(s);
    if (!dia->isHeld())
        throw store::StoreError(store::ErrorNumber::Locked, s(text::HeldByAnotherTerminal));
    s.configuracion.Requery();
    if (!pending(s))
        return false;
    work();
    return true;
}

// --- The outbox ---

// A file beside the databases holds the day whose outbox is due. It is made before the commit that
// the outbox follows and goes when all is sent: whatever a program dies of in between, the next
// start of the day sends the rest. What an earlier day left is not sent, since each run looks at
// its own day alone.
QString sendingMark(const Sesion &s)
{
    return store::pathUnder(s.dataFolder, QStringLiteral("kelvara.envio"));
}

QByteArray thisDay(const Sesion &s) { return s.reloj.hoy.toString(Qt::ISODate).toLatin1(); }

void mark(const Sesion &s)
{
    QSaveFile mark(sendingMark(s));
    const QByteArray dia = thisDay(s);
    if (!mark.open(QIODevice::WriteOnly) || mark.write(dia) != dia.size() || !mark.flush()
        || !mark.commit())
        throw store::StoreError(store::ErrorNumber::PathOrDisk, mark.fileName());
}

bool hasOutboxDue(const Sesion &s)
{
    QFile mark(sendingMark(s));
    return mark.open(QIODevice::ReadOnly) && mark.readAll() == thisDay(s);
}

// Another terminal may have begun the next day meanwhile, whose mark this is not to take away.
void unmark(const Sesion &s)
{
    QFile mark(sendingMark(s));
    if (hasOutboxDue(s) && !mark.remove())
        throw store::StoreError(store::ErrorNumber::PathOrDisk, mark.fileName());
}

// @return false when another terminal is sending
bool send(Sesion &s, const LaterSteps &steps)
{
    if (!steps.sendMessages || !hasOutboxDue(s))
        return true;
    s.configuracion.Requery();
    if (!steps.sendMessages(s, s.reloj.hoy))
        return false;
    unmark(s);
    return true;
}

// --- Day and month ---

bool runDay(Sesion &s, const LaterSteps &steps)
{
    std::optional<DayRun> run;
    underLock(s, isFirstStart, [&] {
        if (steps.sendMessages)
            mark(s);
        run.emplace(runPasses(s, advanceDates));
    });
    if (run)
        report(*run);
    return run.has_value();
}

void runMonth(Sesion &s, const LaterSteps &steps)
{
    underLock(s, isNewMonth, [&] {
        if (steps.sendMessages)
            mark(s);
        steps.monthlyStep(s);
        s.morvane->Execute("UPDATE Configuracion set FechaUltimoInicioMes = ?", s.reloj.hoy);
    });
}

bool passGate(Sesion &s, const LaterSteps &steps)
{
    bool hasRun = false;
    try {
        hasRun = isFirstStart(s) && runDay(s, steps);
    } catch (const store::StoreError &) {
        agenda::loadAlarms(s); // the appointments stand, whatever became of the pass
        throw;
    }
    // A second start of the day rings the alarms as well.
    if (!hasRun)
        agenda::loadAlarms(s);

    if (hasRun || hasOutboxDue(s))
        s.progress.tellStage(s(text::PerformingTasks));
    const bool free = send(s, steps);

    s.progress.tellStage(s(text::MonthlyTasks));
    // The terminal that is sending goes on to the month itself.
    if (steps.monthlyStep && free && isNewMonth(s)) {
        runMonth(s, steps);
        send(s, steps);
    }
    return hasRun;
}

} // namespace

void TareasDeInicio(Sesion &s) { report(runPasses(s, nullptr)); }

bool IniciarTareas(Sesion &s, const LaterSteps &steps)
{
    try {
        return passGate(s, steps);
    } catch (const store::StoreError &e) {
        if (e.number != store::ErrorNumber::DatabaseDamaged)
            throw;
    }
    // The pass reads what no opening reads. Nothing of it was written; the file is repaired and the
    // day run again.
    store::noteDamage(s);
    if (const auto failure = store::openStore(s))
        throw store::StoreError(store::ErrorNumber::Internals, failure->text);
    return passGate(s, steps);
}
