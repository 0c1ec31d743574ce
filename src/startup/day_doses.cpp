// Doses: those missed while the program was closed, those of today, and the reminders.

#include "startup/day_passes.h"

#include "agenda/tasks.h"
#include "board/board_lines.h"
#include "clinical/doses.h"
#include "contact/contact.h"
#include "store/lookups.h"
#include "texts/texts.h"

using namespace startup;

// --- Doses missed while the program was closed ---

namespace
{

void logForList(DayRun &c, int idm, int idc, int ida, int dos)
{
    Sesion &s = c.s;
    const auto cut = [&s](const char *column, const QString &t) {
        return s.rep97->trimmed("auxrevacunacion", column, t);
    };
    s.rep97->Execute(
        "insert into auxrevacunacion (mas, vac, pro, dir, tel, dos) values (?, ?, ?, ?, ?, ?)",
        cut("mas", LeerCampo(s, "clientes", "mascotas", idm, "nom")),
        cut("vac", LeerCampo(s, "finanzas", "articulos", ida, "nom")),
        cut("pro", LeerCampo(s, "clientes", "clientes", idc, "ayn")),
        cut("dir", DomicilioCliente(s, idc)), cut("tel", TelefonosCliente(s, idc)), dos);
}

} // namespace

void passes::missedDoses(DayRun &c)
{
    Sesion &s = c.s;
    s.progress.tellStage(s(text::ScheduledExpirations));
    const bool list = c.setting("LVMascotas").toBool();
    int first = 0, second = 0, withService = 0;
    c.attempt([&] {
        Recordset r = s.clientes->OpenSnapshot(
            "SELECT ArtPlan.idm, ArtPlan.ida, ArtPlan.dos, ArtPlan.IdCat, Mascotas.ser, "
            "Mascotas.idc FROM ArtPlan INNER JOIN Mascotas ON ArtPlan.Idm = Mascotas.Idm WHERE "
            "(ArtPlan.Si = 0 or ArtPlan.Si = 2) and ArtPlan.Rep BETWEEN ? AND ? and "
            "Mascotas.dec = 0 ORDER BY ArtPlan.Idm",
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
                logForList(c, idm, f[5].toInt(), ida, dos);
        });
    });
    c.attempt([&] {
        if (first > 0)
            AgregarPizarra(s,
                           withFullStop(joined({s(text::ShouldHaveProvided), numberText(first),
                                                s(text::DosesWithoutService)})),
                           103, 6, 18);
        if (second > 0)
            AgregarPizarra(s,
                           withFullStop(joined({s(text::ShouldHaveProvided), numberText(second),
                                                s(text::DosesDiscontinued)})),
                           103, 14, 18);
        if (withService > 0)
            AgregarPizarra(
                s,
                withFullStop(joined({s(text::ShouldHaveProvided), numberText(withService),
                                     s(text::DosesWithService)})),
                103, 7, 19);
    });
    c.listMissed = first > 0 && list;
}

// --- Doses of today ---

namespace
{

struct TodaysDoses {
    int toDay = 0;  // clients without service, nothing overdue
    int late = 0;   // the same with overdue doses
    int second = 0; // second overdue dose, a message goes out
    int withService = 0;
};

void doseLine(DayRun &c, const TodaysDoses &d, bool discontinued)
{
    Sesion &s = c.s;
    const auto line = [&s](const QString &text, int dibujo, int codigo1, int codigo2) {
        AgregarPizarra(s, text, dibujo, codigo1, codigo2);
    };
    if (d.withService > 0)
        line(joined({s(text::TodayShouldProvide), numberText(d.withService),
                     s(text::DosesWithService)}),
             104, 4, 21);

    const QString first =
        joined({s(text::TodayShouldProvide), numberText(d.toDay), s(text::DosesWithoutService)});
    const QString both =
        withFullStop(joined({first, s(text::And), numberText(d.late), s(text::DosesDiscontinued)}));
    const QString late = withFullStop(
        joined({s(text::TodayShouldProvide), numberText(d.late), s(text::DosesDiscontinued)}));
    const QString messages = joined({numberText(d.second), s(text::FirstDiscontinued)});
    if (d.toDay > 0 && d.late > 0) {
        if (!discontinued)
            line(both, 102, 3, 20);
        else if (d.second != 0)
            line(joined({both, messages}), 102, 3, 5);
        else
            line(joined({both, s(text::NoFirstDiscontinued)}), 102, 3, 20);
    } else if (d.toDay > 0) {
        line(withFullStop(first), 102, 3, 20);
    } else if (d.late > 0) {
        if (!discontinued)
            line(late, 103, 14, 0);
        else if (d.second != 0)
            line(joined({late, messages}), 109, 14, 5);
        else
            line(joined({late, s(text::NoFirstDiscontinued)}), 103, 3, 20);
    }
}

} // namespace

void passes::dosesOfTheDay(DayRun &c)
{
    Sesion &s = c.s;
    // On as 1 and as -1, the two ways in which a Yes was ever stored.
    const int setting = c.setting("MedidasRevacDescont").toInt();
    const bool discontinued = setting == 1 || setting == -1;
    TodaysDoses d;
    for (QDate dia = c.from(1); dia <= c.hoy; dia = dia.addDays(1)) {
        c.attempt([&] {
            Recordset r = s.clientes->OpenSnapshot(
                "select ArtPlan.idm, ArtPlan.ida, ArtPlan.dos, ArtPlan.IdCat, mascotas.ser from "
                "ArtPlan inner join mascotas on mascotas.idm = ArtPlan.idm where ArtPlan.rep = ? "
                "and (ArtPlan.si = 0 or ArtPlan.si = 2) and mascotas.dec = 0",
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
                    // A dose of a closed day is booked for today.
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
    const int medio = measureOf(c.setting("MedidasRevac"));
    if (medio == 0)
        return;
    const int leadTime = c.setting("tiempovencimiento").toInt();
    int send = 0;
    for (QDate dia = c.from(1); dia <= c.hoy; dia = dia.addDays(1)) {
        c.attempt([&] {
            Recordset r = s.clientes->OpenSnapshot(
                "select ArtPlan.idm, ArtPlan.ida, ArtPlan.dos, ArtPlan.IdCat from ArtPlan inner "
                "join mascotas on mascotas.idm = ArtPlan.idm where ArtPlan.rep = ? and (ArtPlan.si "
                "= 0 or ArtPlan.si = 2) and (mascotas.ser = 0) and Ana = 0 and mascotas.dec = 0",
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
                t.des = numberText(dos); // the outbox finds the dose by it
                AgregarTarea(s, t);
                ++send;
            });
        });
    }
    c.attempt([&] {
        if (send > 0)
            AgregarPizarra(
                s, joined({s(text::WeMustSend), numberText(send), s(text::DoseRemindersSent)}), 109,
                13, 5);
    });
}
