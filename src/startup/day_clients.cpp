// Clients: birthdays of their animals, debts, and a greeting for new clients.

#include "startup/day_passes.h"

#include "agenda/tasks.h"
#include "board/board_lines.h"
#include "clients/profiles.h"
#include "columns/configuracion.h"
#include "texts/texts.h"

using namespace startup;
using namespace board;

// --- Birthdays ---

void passes::birthday(DayRun &c)
{
    Sesion &s = c.s;
    const int medio = measureOf(c.setting(setting::MedidasCumple));
    int celebrated = 0;
    c.attempt([&] {
        // On purpose: a birthday on 29 February counts only in leap years, since day and month must
        // be today's.
        Recordset r = s.clientes->OpenSnapshot(
            "select idm, idc from mascotas where fecn is not null and day(fecn) = ? and "
            "month(fecn) = ? and dec = 0",
            c.hoy.day(), c.hoy.month());
        c.forEachRow(r, [&](const Recordset &f) {
            if (medio != 0) {
                const bool featured = ClienteDestacado(s, f[1].toInt());
                agenda::Task t;
                t.tip = featured ? agenda::TaskKind::FeaturedBirthday : agenda::TaskKind::Birthday;
                t.ida = f[0].toInt();
                t.medio = featured ? agenda::Channel::Mail : medio;
                t.fcreacion = c.hoy;
                AgregarTarea(s, t);
            }
            ++celebrated;
        });
    });
    c.attempt([&] {
        if (celebrated > 0)
            AgregarPizarra(s,
                           joined({numberText(celebrated),
                                   s(medio != 0 ? text::BirthdaysGreeted : text::BirthdaysToday)}),
                           picture::Messages, click::ListBirthdays,
                           medio != 0 ? click::Outbox : click::None);
    });
}

// --- Debtors ---

namespace
{

// What happens to an unpaid debt, step by step.
struct DebtStep {
    int men;      // the step that the debt is at
    int moreDays; // days to wait beyond `diasdeudores`
    int medio;    // channel of the reminder, 0 for none
    bool account;
};

constexpr DebtStep DebtSteps[] = {
    {0, 0, agenda::Channel::MailOrLetter, true},
    {1, 10, agenda::Channel::MailOrLetter, true},
    {2, 20, agenda::Channel::Letter, true},
    {3, 0, 0, false}, // after three reminders nothing more happens
};

} // namespace

void passes::debtors(DayRun &c)
{
    Sesion &s = c.s;
    s.progress.tellStage(s(text::CheckingDebts));
    const int term = c.setting(setting::diasdeudores).toInt();
    const int measure = c.setting(setting::MedidasDeudores).toInt();
    const bool remind = measure == 1 || measure == 3;
    int debtorCount = 0;
    c.attempt([&] {
        Recordset r = s.finanzas->OpenRecordset(
            "select idc, fecultpago, men from ctactec where fecultpago <= ? and cancelado = 0",
            c.hoy.addDays(-term));
        c.forEachRow(r, [&](Recordset &f) {
            const int men = f["men"].toInt(), idc = f["idc"].toInt();
            const qint64 daysUnpaid = f["fecultpago"].toDate().daysTo(c.hoy);
            for (const DebtStep &p : DebtSteps) {
                // The first step needs no further wait: the query has checked its days.
                if (men != p.men || (p.moreDays > 0 && daysUnpaid < term + p.moreDays))
                    continue;
                if (remind && p.medio != 0) {
                    agenda::Task t;
                    t.tip = agenda::TaskKind::DebtReminder;
                    t.ida = idc;
                    t.dia = c.hoy;
                    t.medio = p.medio;
                    t.fcreacion = c.hoy;
                    t.des = s(text::DebtNotification);
                    AgregarTarea(s, t);
                }
                f.Edit();
                f.Put("men", men + 1);
                f.Update();
                debtorCount += p.account;
                if (men == 0) // the step is stored even if the profile cannot be updated
                    c.attempt([&] {
                        s.morvane->Execute("update perfiles set deudasdemoradas = deudasdemoradas "
                                           "+ 1 where idc = ?",
                                           idc);
                    });
                break;
            }
        });
    });
    c.attempt([&] {
        if (debtorCount == 0)
            return;
        QString line =
            joined({s(text::Detected), numberText(debtorCount), s(text::DebtorsWithoutPayment),
                    numberText(term), s(text::DebtorsDays)});
        if (remind)
            line = joined({line, s(text::DebtorsContacted)});
        AgregarPizarra(s, line, picture::Debts, click::ListDebtors,
                       remind ? click::Outbox : click::None);
    });
}

// --- New clients ---

void passes::newClients(DayRun &c)
{
    Sesion &s = c.s;
    if (c.setting(setting::AutNuevoCliente).toInt() != 1)
        return;
    int greeted = 0;
    c.attempt([&] {
        Recordset r = s.clientes->OpenSnapshot(
            "SELECT idc FROM Clientes WHERE email IS NOT NULL AND email <> '' AND feci BETWEEN "
            "(DATE()-2) AND DATE()");
        c.forEachRow(r, [&](const Recordset &f) {
            if (!s.morvane
                     ->read("SELECT TOP 1 Tip FROM TareasAgenda WHERE Tip = ? AND Ida = ?",
                            agenda::TaskKind::NewClient, f[0])
                     .isNull())
                return;
            agenda::Task t;
            t.tip = agenda::TaskKind::NewClient;
            t.ida = f[0].toInt();
            t.dia = c.hoy;
            t.medio = agenda::Channel::Mail;
            t.fcreacion = c.hoy;
            t.des = joined({s(text::GreetingsFrom), s.clinic.nom});
            AgregarTarea(s, t);
            ++greeted;
        });
    });
    c.attempt([&] {
        if (greeted > 0)
            AgregarPizarra(
                s, joined({s(text::WeMustSend), numberText(greeted), s(text::NewClientMessages)}),
                picture::Messages, click::AutomaticTasks, click::Outbox);
    });
}
