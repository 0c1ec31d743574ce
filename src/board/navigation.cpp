#include "board/navigation.h"

#include "store/lookups.h"
#include "texts/texts.h"

#include <algorithm>
#include <array>

using namespace board;
using namespace Qt::StringLiterals;

namespace
{

constexpr std::array QuickListings{
    click::ListFoodShort,   click::ListFoodShortServed,
    click::ListDosesToday,  click::ListDosesTodayServed,
    click::ListDosesMissed, click::ListDosesMissedServed,
    click::ListGuests,      click::ListBirthdays,
    click::ListReminders,   click::ListDosesDiscontinued,
    click::ListDebtors,     click::ListBelowMinimum,
    click::ListExpired,
};

constexpr int DayMode = 1;
constexpr int AutomationMode = 2;

bool isQuickListing(int code)
{
    return std::ranges::find(QuickListings, code) != QuickListings.end();
}

bool isPhoneRound(int code) { return code >= click::CallMissed && code <= click::CallTodayServed; }

Target agenda(QDate day, int mode)
{
    return {u"frmagenda"_s, {{u"dia"_s, day}, {u"modo"_s, mode}}, {}};
}

constexpr std::array<BoardButton, 10> Buttons{{
    {u"cmddueños", u"frmPropietarios", u"Propietarios", text::OwnersButton, u'1', false},
    {u"cmdfinanzas", u"FrmFinanzas", u"Finanzas", text::FinanceButton, u'2', false},
    {u"cmdAnalisis", u"frmAnalisis", u"Analisis", text::AnalysisButton, u'3', true},
    {u"cmdMensajeria", u"frmmensajeria", u"Mensajeria", text::MessagingButton, u'4', false},
    {u"cmdListados", u"frmlistados", u"Listados", text::ListingsButton, u'5', false},
    {u"cmdAgenda", u"frmagenda", u"Agenda", text::Agenda, u'6', false},
    {u"cmdConfiguracion", u"frmConfiguracion", u"Configuracion", text::SettingsButton, u'7', true},
    {u"cmdMorvane", u"frmAtlasPersonal", u"Morvane", text::EncyclopediaButton, u'8', false},
    {u"cmdAcerca", u"frmAcerca", u"Acerca", text::AboutTitle, u'9', false},
    {u"cmdsalir", u"", u"Salir", text::ExitButton, u'0', false},
}};

} // namespace

Target board::iconTarget(const Sesion &s, const BoardLine &line, WhichIcon icon)
{
    const int code = icon == WhichIcon::First ? line.codigo1 : line.codigo2;
    if (isQuickListing(code))
        return {u"frmlistados"_s, {{u"rapido"_s, code}}, {}};
    if (isPhoneRound(code))
        return {u"frmAvisosPlanificadas"_s, {{u"grupo"_s, code}}, {}};
    switch (code) {
    case click::Outbox:
        return {u"frmmensajeria"_s, {}, {}};
    case click::Agenda:
        return agenda(s.reloj.hoy, DayMode);
    case click::AutomaticTasks:
        return agenda(s.reloj.hoy, AutomationMode);
    case click::AgendaOfYesterday:
        return agenda(s.reloj.hoy.addDays(-1), DayMode);
    case click::Analysis:
        return {u"frmAnalisis"_s, {}, {}};
    default:
        return {};
    }
}

Target board::textTarget(const Sesion &s, const BoardLine &line)
{
    switch (line.codigo1) {
    case click::VideoPage:
        return {{}, {}, QUrl(store::videosPage(s))};
    case click::HelpPage:
        return {{}, {}, QUrl(store::helpPage(s))};
    case click::FolderInText: {
        const QString folder = line.message.section(u':', 1).trimmed();
        return folder.isEmpty() ? Target{} : Target{{}, {}, QUrl::fromLocalFile(folder)};
    }
    default:
        return {};
    }
}

QString board::codePicture(int code, WhichIcon icon)
{
    const bool first = icon == WhichIcon::First;
    if (isQuickListing(code) && (first || code <= click::ListDosesTodayServed))
        return u"listadospizarra"_s;
    if (isPhoneRound(code) && !first)
        return u"telefonoChico"_s;
    if (code == click::Agenda || (code == click::AgendaOfYesterday && first))
        return u"AgendaPizarra"_s;
    switch (code) {
    case click::Outbox:
        return u"mensajeriapizarra"_s;
    case click::AutomaticTasks:
        return u"KelvaraPizarra"_s;
    case click::Settings:
        return u"ConfPizarra"_s;
    case click::Analysis:
        return first ? u"AnalisisPizarraChico"_s : QString();
    default:
        return {};
    }
}

std::span<const BoardButton> board::boardButtons() { return Buttons; }

bool board::canUse(const store::User &user, const BoardButton &button)
{
    return !(user.isCommon() && button.soloSupervisor);
}
