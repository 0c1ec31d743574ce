#include "messages/templates.h"

#include "agenda/tasks.h"
#include "columns/configuracion.h"
#include "contact/contact.h"
#include "store/lookups.h"
#include "texts/admin.h"
#include "texts/texts.h"

#include <QLocale>

using namespace messages;
using namespace Qt::StringLiterals;

namespace
{

// On purpose: the greeting for featured clients is read from a column that no form edits.
constexpr std::string_view SentToFeaturedColumn = setting::MensajeriaSoloADestacados;

// The column of the template for a kind and channel; "" for a kind without a template.
std::string_view columnOf(int tip, int medio)
{
    if (tip == agenda::TaskKind::FeaturedBirthday)
        return SentToFeaturedColumn;
    std::string_view column;
    for (const Template &p : templates()) {
        if (p.tip == tip && (p.medio == agenda::Channel::Mail) == (medio == agenda::Channel::Mail))
            return p.column;
        if (p.tip == tip)
            column = p.column; // a kind with a single text uses it for every channel
    }
    return column;
}

int owner(Sesion &s, int idc, int idm)
{
    return idc != 0 ? idc : LeerCampo(s, "clientes", "mascotas", idm, "idc").toInt();
}

} // namespace

const std::vector<Template> &messages::templates()
{
    static const std::vector<Template> all = {
        {text::DebtLetter, text::DebtLetterNote, setting::mensajeriadeudorescarta,
         agenda::TaskKind::DebtReminder, agenda::Channel::Letter},
        {text::DebtMail, text::DebtMailNote, setting::mensajeriadeudoresmail,
         agenda::TaskKind::DebtReminder, agenda::Channel::Mail},
        {text::PrepaidMail, text::PrepaidMailNote, setting::MensajeriaMedicinaPrepaga,
         agenda::TaskKind::PrepaidInArrears, agenda::Channel::Mail},
        {text::BirthdayLetter, text::BirthdayLetterNote, setting::mensajeriacumplecarta,
         agenda::TaskKind::Birthday, agenda::Channel::Letter},
        {text::BirthdayMail, text::BirthdayMailNote, setting::mensajeriacumplemail,
         agenda::TaskKind::Birthday, agenda::Channel::Mail},
        {text::FeaturedBirthdayMail, text::FeaturedBirthdayMailNote,
         setting::MensajeriaCumpleMailDestacados, agenda::TaskKind::FeaturedBirthday,
         agenda::Channel::Mail},
        {text::FoodMail, text::FoodMailNote, setting::mensajeriaalimento,
         agenda::TaskKind::FoodShortage, agenda::Channel::Mail},
        {text::DiscontinuedMail, text::DiscontinuedMailNote, setting::mensajeriadescont,
         agenda::TaskKind::DiscontinuedDose, agenda::Channel::Mail},
        {text::AppointmentMail, text::AppointmentMailNote, setting::mensajeriaturno,
         agenda::TaskKind::AppointmentReminder, agenda::Channel::Mail},
        {text::DoseLetter, text::DoseLetterNote, setting::mensajeriavencimientoscarta,
         agenda::TaskKind::DoseReminder, agenda::Channel::Letter},
        {text::DoseMail, text::DoseMailNote, setting::mensajeriavencimientosmail,
         agenda::TaskKind::DoseReminder, agenda::Channel::Mail},
        {text::NewClientMail, text::NewClientMailNote, setting::MensajeriaNuevoCliente,
         agenda::TaskKind::NewClient, agenda::Channel::Mail},
        {text::FrequentClientMailTitle, text::FrequentMailNote, setting::MensajeriaFrecuente,
         agenda::TaskKind::Frequent, agenda::Channel::Mail},
    };
    return all;
}

const QStringList &messages::tags()
{
    static const QStringList all{u"NomCli"_s, u"DirCli"_s, u"NomMas"_s, u"TraMas"_s, u"ProVet"_s,
                                 u"DirVet"_s, u"TelVet"_s, u"RazVet"_s, u"FecDia"_s, u"HorTur"_s};
    return all;
}

QString ResolverTag(Sesion &s, const QString &tag, int idc, int idm, int ida)
{
    const QString t = tag.toUpper();
    if (t == u"NOMCLI")
        return LeerCampo(s, "clientes", "clientes", owner(s, idc, idm), "ayn");
    if (t == u"DIRCLI")
        return DomicilioCliente(s, owner(s, idc, idm));
    if (t == u"NOMMAS")
        return LeerCampo(s, "clientes", "mascotas", idm, "nom");
    if (t == u"TRAMAS")
        return LeerCampo(s, "finanzas", "articulos", ida, "nom");
    if (t == u"PROVET")
        return s.clinic.pro;
    if (t == u"DIRVET")
        return s.clinic.dir;
    if (t == u"TELVET")
        return s.clinic.tel;
    if (t == u"RAZVET")
        return s.clinic.nom;
    if (t == u"FECDIA")
        return QLocale().toString(s.reloj.hoy, QLocale::LongFormat);
    if (t == u"HORTUR") {
        // Tasks without a patient, such as the feeding rounds, are not appointments.
        const QTime hour = idm != 0 ? HoraTurnoDelDia(s, idm, s.reloj.hoy) : QTime();
        return hour.isValid() ? agenda::longHour(hour) : QString();
    }
    return {};
}

QString messages::fillTags(Sesion &s, const QString &templateText, int idc, int idm, int ida)
{
    // A single pass: the values of tags are data and are not scanned for tags again.
    QString text;
    for (qsizetype i = 0; i < templateText.size();) {
        const qsizetype opens = templateText.indexOf(u'<', i);
        if (opens < 0)
            return text + templateText.mid(i);
        text += templateText.mid(i, opens - i);
        const qsizetype closes = templateText.indexOf(u'>', opens);
        if (closes < 0)
            return text; // On purpose: the rest is dropped.
        text += ResolverTag(s, templateText.mid(opens + 1, closes - opens - 1), idc, idm, ida);
        i = closes + 1;
    }
    return text;
}

QString ComponerMensaje(Sesion &s, int tip, int idc, int idm, int ida, int medio)
{
    const std::string_view column = columnOf(tip, medio);
    if (column.empty())
        return {};
    return fillTags(s, s.configuracion[column].toText(), idc, idm, ida);
}

std::optional<Example> messages::messageExample(Sesion &s, int idc)
{
    Example e;
    const auto exists = [&s](int which) {
        return which != 0 && s.lists.clientes.lookUp("idc = ?", which, "idc").has_value();
    };
    e.idc = idc != 0 ? idc : s.IdGlobal.idc;
    if (!exists(e.idc))
        e.idc = s.clientes->read("select min(idc) from clientes").toInt();
    if (e.idc == 0)
        return std::nullopt;
    e.idm = LeerCampo(s, "clientes", "mascotas", s.IdGlobal.idm, "idc").toInt() == e.idc
                ? s.IdGlobal.idm
                : s.clientes->read("select min(idm) from mascotas where idc = ?", e.idc).toInt();
    e.ida = s.clientes->read("select max(ida) from artplan where idm = ?", e.idm).toInt();
    if (e.ida == 0)
        e.ida = s.finanzas
                    ->read("SELECT MIN(Articulos.Ida) FROM Articulos INNER JOIN FLCategorias ON "
                           "Articulos.IDCat = FLCategorias.IDCat WHERE FLCategorias.suministro = "
                           "'p'")
                    .toInt();
    return e;
}
