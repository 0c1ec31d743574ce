// Doses: those missed while the program was closed, those of today, and reminders.

#include "startup/day_passes.h"

#include "agenda/tasks.h"
#include "board/board_lines.h"
#include "clinical/doses.h"
#include "columns/configuracion.h"
#include "contact/contact.h"
#include "store/lookups.h"
#include "texts/texts.h"

using namespace startup;
using namespace board;

// --- Doses missed while the program was closed ---

void passes::missedDoses(DayRun &c)
{
    Sesion &s = c.s;
    s.progress.tellStage(s(text::ScheduledExpirations));
    const bool list = c.setting(setting::LVMascotas).toBool();
    int first = 0, second = 0, withService = 0;
    c.attempt([&] {
        Recordset r = s.clientes->OpenSnapshot(
            "SELECT ArtPlan.idm, ArtPlan.ida, ArtPlan.dos, ArtPlan.IdCat, Mascotas.ser FROM "
            "ArtPlan INNER JOIN Mascotas ON ArtPlan.Idm = Mascotas.Idm WHERE "
                + clinical::OpenDoses
                + " and ArtPlan.Rep BETWEEN ? AND ? and Mascotas.dec = 0 ORDER BY ArtPlan.Idm",
            c.from(0), c.hoy.addDays(-1));
        c.forEachRow(r, [&](const Recordset &f) {
            const int idm = f[0].toInt(), ida = f[1].toInt(), dos = f[2].toInt();
            if (f[4].toInt() == 0) {
                const int n = ContarDosisAtrasadas(s, idm, ida, dos, f[3].toInt());
                first += n == 0;
                second += n == 1;
            } else {
                ++withService;
            }
            if (list)
                contact::addToList(s, {.table = "auxrevacunacion", .product = "vac"}, idm, ida,
                                   dos);
        });
    });
    c.attempt([&] {
        if (first > 0)
            AgregarPizarra(s,
                           withFullStop(joined({s(text::ShouldHaveProvided), numberText(first),
                                                s(text::DosesWithoutService)})),
                           picture::DosesLate, click::ListDosesMissed, click::CallMissed);
        if (second > 0)
            AgregarPizarra(s,
                           withFullStop(joined({s(text::ShouldHaveProvided), numberText(second),
                                                s(text::DosesDiscontinued)})),
                           picture::DosesLate, click::ListDosesDiscontinued, click::CallMissed);
        if (withService > 0)
            AgregarPizarra(
                s,
                withFullStop(joined({s(text::ShouldHaveProvided), numberText(withService),
                                     s(text::DosesWithService)})),
                picture::DosesLate, click::ListDosesMissedServed, click::CallMissedServed);
    });
    c.listMissed = first > 0 && list;
}

// --- Doses of today ---

namespace
{

struct TodaysDoses {
    int toDay = 0;  // clients without service, nothing overdue
    int late = 0;   // the same, with overdue doses
    int second = 0; // second overdue dose: a message goes out
    int withService = 0;
};

void doseLine(DayRun &c, const TodaysDoses &d, bool discontinued)
{
    Sesion &s = c.s;
    const auto line = [&s](const QString &text, int dibujo, int codigo1,
                           int codigo2 = click::None) {
        AgregarPizarra(s, text, dibujo, codigo1, codigo2);
    };
    if (d.withService > 0)
        line(joined({s(text::TodayShouldProvide), numberText(d.withService),
                     s(text::DosesWithService)}),
             picture::DosesWithService, click::ListDosesTodayServed, click::CallTodayServed);

    const QString first =
        joined({s(text::TodayShouldProvide), numberText(d.toDay), s(text::DosesWithoutService)});
    const QString both =
        withFullStop(joined({first, s(text::And), numberText(d.late), s(text::DosesDiscontinued)}));
    const QString late = withFullStop(
        joined({s(text::TodayShouldProvide), numberText(d.late), s(text::DosesDiscontinued)}));
    const QString messages = joined({numberText(d.second), s(text::FirstDiscontinued)});
    if (d.toDay > 0 && d.late > 0) {
        if (!discontinued)
            line(both, picture::DosesToday, click::ListDosesToday, click::CallToday);
        else if (d.second != 0)
            line(joined({both, messages}), picture::DosesToday, click::ListDosesToday,
                 click::Outbox);
        else
            line(joined({both, s(text::NoFirstDiscontinued)}), picture::DosesToday,
                 click::ListDosesToday, click::CallToday);
    } else if (d.toDay > 0) {
        line(withFullStop(first), picture::DosesToday, click::ListDosesToday, click::CallToday);
    } else if (d.late > 0) {
        if (!discontinued)
            line(late, picture::DosesLate, click::ListDosesDiscontinued);
        else if (d.second != 0)
            line(joined({late, messages}), picture::Messages, click::ListDosesDiscontinued,
                 click::Outbox);
        else
            line(joined({late, s(text::NoFirstDiscontinued)}), picture::DosesLate,
                 click::ListDosesToday, click::CallToday);
    }
}

} // namespace

void passes::dosesOfTheDay(DayRun &c)
{
    Sesion &s = c.s;
    // Yes has been stored both as 1 and as -1.
    const int setting = c.setting(setting::MedidasRevacDescont).toInt();
    const bool discontinued = setting == 1 || setting == -1;
    TodaysDoses d;
    for (QDate dia = c.from(1); dia <= c.hoy; dia = dia.addDays(1)) {
        c.attempt([&] {
            Recordset r = s.clientes->OpenSnapshot(
                "select ArtPlan.idm, ArtPlan.ida, ArtPlan.dos, ArtPlan.IdCat, mascotas.ser from "
                "ArtPlan inner join mascotas on mascotas.idm = ArtPlan.idm where ArtPlan.rep = ? "
                "and "
                    + clinical::OpenDoses + " and mascotas.dec = 0",
                dia);
            c.forEachRow(r, [&](const Recordset &f) {
                const int idm = f[0].toInt(), ida = f[1].toInt(), dos = f[2].toInt(),
                          idcat = f[3].toInt(), ser = f[4].toInt();
                if (dia == c.hoy && ser == 0) {
                    const int n = ContarDosisAtrasadas(s, idm, ida, dos, idcat);
                    d.toDay += n == 0;
                    d.late += n > 0;
                    if (discontinued && n == 1) {
                        agenda::Task t;
                        t.tip = agenda::TaskKind::DiscontinuedDose;
                        t.ida = idm;
                        t.medio = agenda::Channel::Mail;
                        t.fcreacion = c.hoy;
                        t.artaux = ida;
                        t.des = s(text::VaccinationDiscontinued);
                        AgregarTarea(s, t);
                        ++d.second;
                    }
                }
                if (ser > 0) {
                    // Doses of the closed days are booked for today too.
                    bookService(c, idm, ida, idcat);
                    ++d.withService;
                }
            });
        });
    }
    c.attempt([&] { doseLine(c, d, discontinued); });
}

// --- Dose reminders ---

void passes::doseReminders(DayRun &c)
{
    Sesion &s = c.s;
    const int medio = measureOf(c.setting(setting::MedidasRevac));
    if (medio == 0)
        return;
    const int leadTime = c.setting(setting::tiempovencimiento).toInt();
    int send = 0;
    for (QDate dia = c.from(1); dia <= c.hoy; dia = dia.addDays(1)) {
        c.attempt([&] {
            Recordset r = s.clientes->OpenSnapshot(
                "select ArtPlan.idm, ArtPlan.ida, ArtPlan.dos, ArtPlan.IdCat from ArtPlan inner "
                "join mascotas on mascotas.idm = ArtPlan.idm where ArtPlan.rep = ? and "
                    + clinical::OpenDoses
                    + " and (mascotas.ser = 0) and Ana = 0 and mascotas.dec = 0",
                dia.addDays(leadTime));
            c.forEachRow(r, [&](const Recordset &f) {
                const int idm = f[0].toInt(), ida = f[1].toInt(), dos = f[2].toInt();
                if (ContarDosisAtrasadas(s, idm, ida, dos, f[3].toInt()) != 0)
                    return;
                agenda::Task t;
                t.tip = agenda::TaskKind::DoseReminder;
                t.ida = idm;
                t.medio = medio;
                t.fcreacion = c.hoy;
                t.artaux = ida;
                t.des = numberText(dos); // by which the outbox finds the dose
                AgregarTarea(s, t);
                ++send;
            });
        });
    }
    c.attempt([&] {
        if (send > 0)
            AgregarPizarra(
                s, joined({s(text::WeMustSend), numberText(send), s(text::DoseRemindersSent)}),
                picture::Messages, click::ListReminders, click::Outbox);
    });
}
