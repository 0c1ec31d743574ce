#include "board/navigation.h"

#include "store/lookups.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace
{

constexpr std::array quickListings{1, 2, 3, 4, 6, 7, 9, 12, 13, 14, 15, 17, 31};

// Codes that a line carries for its text instead of for an icon.
constexpr int videoPage = 34;
constexpr int folderInText = 37;
constexpr int helpPage = 38;

constexpr int dayMode = 1;
constexpr int automationMode = 2;

bool isQuickListing(int code)
{
    return std::ranges::find(quickListings, code) != quickListings.end();
}

bool isPhoneRound(int code) { return code >= 18 && code <= 21; }

Destino agenda(QDate day, int mode)
{
    return {u"frmagenda"_s, {{u"dia"_s, day}, {u"modo"_s, mode}}, {}};
}

constexpr std::array<BotonDeTablero, 10> buttons{{
    {u"cmddueños", u"frmPropietarios", u"Propietarios", 9100, u'1', false},
    {u"cmdfinanzas", u"FrmFinanzas", u"Finanzas", 9101, u'2', false},
    {u"cmdAnalisis", u"frmAnalisis", u"Analisis", 9102, u'3', true},
    {u"cmdMensajeria", u"frmmensajeria", u"Mensajeria", 9103, u'4', false},
    {u"cmdListados", u"frmlistados", u"Listados", 9104, u'5', false},
    {u"cmdAgenda", u"frmagenda", u"Agenda", 9105, u'6', false},
    {u"cmdConfiguracion", u"frmConfiguracion", u"Configuracion", 9106, u'7', true},
    {u"cmdMorvane", u"frmAtlasPersonal", u"Morvane", 9107, u'8', false},
    {u"cmdAcerca", u"frmAcerca", u"Acerca", 9108, u'9', false},
    {u"cmdsalir", u"", u"Salir", 9109, u'0', false},
}};

} // namespace

Destino DestinoDeIcono(const Sesion &s, const LineaDePizarra &linea, CualIcono icono)
{
    const int code = icono == CualIcono::Primero ? linea.codigo1 : linea.codigo2;
    if (isQuickListing(code))
        return {u"frmlistados"_s, {{u"rapido"_s, code}}, {}};
    if (isPhoneRound(code))
        return {u"frmAvisosPlanificadas"_s, {{u"grupo"_s, code}}, {}};
    switch (code) {
    case 5:
        return {u"frmmensajeria"_s, {}, {}};
    case 8:
        return agenda(s.reloj.hoy, dayMode);
    case 10:
        return agenda(s.reloj.hoy, automationMode);
    case 32:
        return agenda(s.reloj.hoy.addDays(-1), dayMode);
    case 33:
        return {u"frmAnalisis"_s, {}, {}};
    default:
        return {};
    }
}

Destino DestinoDeTexto(const Sesion &s, const LineaDePizarra &linea)
{
    switch (linea.codigo1) {
    case videoPage:
        return {{}, {}, QUrl(PaginaDeVideos(s))};
    case helpPage:
        return {{}, {}, QUrl(PaginaDeAyuda(s))};
    case folderInText: {
        const QString folder = linea.mensaje.section(u':', 1).trimmed();
        return folder.isEmpty() ? Destino{} : Destino{{}, {}, QUrl::fromLocalFile(folder)};
    }
    default:
        return {};
    }
}

QString DibujoDeCodigo(int codigo, CualIcono icono)
{
    const bool first = icono == CualIcono::Primero;
    if (isQuickListing(codigo) && (first || codigo <= 4))
        return u"listadospizarra"_s;
    if (isPhoneRound(codigo) && !first)
        return u"telefonoChico"_s;
    if (codigo == 8 || (codigo == 32 && first))
        return u"AgendaPizarra"_s;
    switch (codigo) {
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

std::span<const BotonDeTablero> BotonesDeTablero() { return buttons; }

bool PuedeUsar(const Usuario &usuario, const BotonDeTablero &boton)
{
    return !(usuario.EsComun() && boton.soloSupervisor);
}
