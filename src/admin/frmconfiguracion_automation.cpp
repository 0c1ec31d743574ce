#include "admin/frmconfiguracion_rows.h"
#include "columns/configuracion.h"
#include "texts/admin.h"
#include "texts/texts.h"

#include <QFormLayout>

using namespace admin;
using namespace Qt::StringLiterals;

namespace
{

const QList<std::pair<int, int>> sendOrNot{{1, text::SendMail}, {2, text::Nothing}};
const QList<std::pair<int, int>> askOrPrint{
    {1, text::AskForPrints}, {2, text::PrintWithoutAsking}, {3, text::Nothing}};

void ask(const PageContext &c, QFormLayout *section, std::string_view column, const QString &title,
         const QList<std::pair<int, int>> &options, int hint)
{
    auto *group = optionsRow(c, section, {QString::fromLatin1(column), title, options, hint});
    ui::bind::Options(c.s, c.guarded, group, column);
}

} // namespace

QWidget *admin::automationPage(const PageContext &c)
{
    const Sesion &s = c.s;
    auto *page = new QWidget;
    auto *column = parts::Column(page);

    auto *clients = parts::sectionOf(column, s(text::SettingsAutomationClients));
    ask(c, clients, setting::AutNuevoCliente, s(text::NewClientQuestion), sendOrNot,
        text::NewClientNote);
    ask(c, clients, setting::AutFrecuente, s(text::FrequentAbsentQuestion), sendOrNot,
        text::FrequentNote);
    ask(c, clients, setting::AutMedicinaPrepaga, s(text::PrepaidArrearsQuestion), sendOrNot,
        text::PrepaidNote);
    ask(c, clients, setting::AutRecordatorioCitasOlvida, s(text::MissedAppointmentQuestion),
        sendOrNot, text::MissedAppointmentNote);

    auto *counter = parts::sectionOf(column, s(text::SettingsAutomationCounter));
    // On purpose: only stored, like the consumption question below. The counter follows other
    // settings, and the help line says so.
    ask(c, counter, setting::AutDeudaNoVenderSupervisor,
        s(text::DebtorSaleQuestion) + u".\n"_s + s(text::ForSupervisor),
        {{1, text::AskFirst}, {2, text::SellWithoutAsking}}, text::DebtorSupervisorNote);
    ask(c, counter, setting::AutDeudaNoVenderComun,
        s(text::DebtorSaleQuestion) + u".\n"_s + s(text::ForCommonUser),
        {{1, text::AskFirst}, {2, text::Disallow}, {3, text::Nothing}}, text::DebtorCommonNote);
    ask(c, counter, setting::AutVentaPlanificadas, s(text::PlannedSaleQuestion), askOrPrint,
        text::PlannedSaleNote);
    ask(c, counter, setting::AutVentaConsumo, s(text::ConsumptionSaleQuestion),
        {{1, text::OpenConsumptionWindow}, {2, text::DoNotOpen}}, text::ConsumptionSaleNote);
    ask(c, counter, setting::AutVentaConsulta, s(text::CheckSaleQuestion),
        {{1, text::AskForHistory}, {2, text::OpenHistoryWindow}, {3, text::Nothing}},
        text::CheckSaleNote);

    auto *record = parts::sectionOf(column, s(text::ClinicalRecordSection));
    ask(c, record, setting::AutDosisPlanificada, s(text::DoseEntryQuestion), askOrPrint,
        text::DoseEntryNote);
    return page;
}
