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
    // A failing statement is not worth a message here; a failing disk still is.
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

// A start is the first of the day if the last one was before today. A folder that has lost the date
// counts as well, since its board would otherwise stay empty for ever.
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

// Runs all passes and @p atEnd as one commit. An interrupted run leaves nothing behind, so no stock
// is consumed twice when the day runs again.
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

// One batch, because a failure may have affected thousands of rows. If the log cannot be written,
// nothing else is lost.
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

// Everything the run has to report and to ask, once it is written and no other terminal waits for
// it.
void report(const DayRun &c)
{
    Sesion &s = c.s;
    const QString source = QStringLiteral("Tareas de Inicio. ");
    // Every failure is logged, but the same one is reported only once.
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

// On purpose: only the number of the month is compared, so exactly twelve months later nothing
// runs.
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

// Whether another terminal has done the work in the meantime can only be known with the lock held.
// Failing to get it is reported, so that nobody takes yesterday's board for today's.
template <typename F>
void underLock(Sesion &s, bool (*pending)(Sesion &), F &&work)
{
    const auto dia = lock(s);
    if (!dia->isHeld())
        throw store::StoreError(store::ErrorNumber::Locked, s(text::HeldByAnotherTerminal));
    s.configuracion.Requery();
    if (pending(s))
        work();
}

// --- The outbox ---

// A file beside the databases names the day whose outbox is due. It is created before the commit
// that the outbox depends on and removed when everything is sent, so that after a crash in between
// the next start of that day sends the rest. Leftovers of an earlier day are not sent: each run
// handles its own day only.
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

// Another terminal may have begun the next day in the meantime; its mark must stay.
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
        agenda::loadAlarms(s); // appointments still need their alarms when the pass fails
        throw;
    }
    // Alarms ring on a second start of the day too.
    if (!hasRun)
        agenda::loadAlarms(s);

    if (hasRun || hasOutboxDue(s))
        s.progress.tellStage(s(text::PerformingTasks));
    const bool free = send(s, steps);

    s.progress.tellStage(s(text::MonthlyTasks));
    // A terminal that is busy sending will do the monthly step itself.
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
    // The pass reads parts of the files that opening them does not. It has written nothing, so the
    // file is repaired and the day runs again.
    store::noteDamage(s);
    if (const auto failure = store::openStore(s))
        throw store::StoreError(store::ErrorNumber::Internals, failure->text);
    return passGate(s, steps);
}
