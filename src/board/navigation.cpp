#include "board/navigation.h"

#include "store/lookups.h"
#include "texts/texts.h"

#include <algorithm>
#include <array>

using namespace board;
using namespace Qt::StringLiterals;

namespace
{

constexpr std::array QuickListings{1, 2, 3, 4, 6, 7, 9, 12, 13, 14, 15, 17, 31};

// Codes that a line carries for its text instead of for an icon.
constexpr int VideoPage = 34;
constexpr int FolderInText = 37;
constexpr int HelpPage = 38;

constexpr int DayMode = 1;
constexpr int AutomationMode = 2;

bool isQuickListing(int code)
{
    return std::ranges::find(QuickListings, code) != QuickListings.end();
}

bool isPhoneRound(int code) { return code >= 18 && code <= 21; }

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
    case 5:
        return {u"frmmensajeria"_s, {}, {}};
    case 8:
        return agenda(s.reloj.hoy, DayMode);
    case 10:
        return agenda(s.reloj.hoy, AutomationMode);
    case 32:
        return agenda(s.reloj.hoy.addDays(-1), DayMode);
    case 33:
        return {u"frmAnalisis"_s, {}, {}};
    default:
        return {};
    }
}

Target board::textTarget(const Sesion &s, const BoardLine &line)
{
    switch (line.codigo1) {
    case VideoPage:
        return {{}, {}, QUrl(store::videosPage(s))};
    case HelpPage:
        return {{}, {}, QUrl(store::helpPage(s))};
    case FolderInText: {
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
    if (isQuickListing(code) && (first || code <= 4))
        return u"listadospizarra"_s;
    if (isPhoneRound(code) && !first)
        return u"telefonoChico"_s;
    if (code == 8 || (code == 32 && first))
        return u"AgendaPizarra"_s;
    switch (code) {
    case 5:
        return u"mensajeriapizarra"_s;
    case 10:
        return u"KelvaraPizarra"_s;
    case 11:
        return u"ConfPizarra"_s;
    case 33:
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
