#include "agenda/task_texts.h"

#include "agenda/tasks.h"
#include "store/lookups.h"
#include "texts/agenda.h"
#include "texts/texts.h"

#include <initializer_list>

using namespace agenda;
using namespace Qt::StringLiterals;

namespace
{

using Words = std::initializer_list<QStringView>;

bool has(const QString &text, Words words)
{
    for (const QStringView p : words)
        if (text.contains(p, Qt::CaseInsensitive))
            return true;
    return false;
}

constexpr Words InHome = {u"home", u"domicilio", u"casa"};

// What a concept is about, in the order in which its words are searched; the first match counts.
enum class Kind {
    Other,
    Food,
    Shift,
    Surgery,
    Query,
    HomeConsultation,
    Grooming,
    Ultrasound,
    Xray,
    Vaccine,
    VaccineInHome,
    Ration,
    User,
};

// @param vaccines the words for vaccines, which differ between the day's list and the sheet
Kind kindOf(const Sesion &s, const QString &t, Words vaccines)
{
    if (has(t, {u"food delivery", u"entrega de alimento", u"alimento"}))
        return Kind::Food;
    if (has(t, {u"retiro", u"entrega", u"ir buscar", u"patient withdrawal"}))
        return Kind::Shift;
    if (has(t, {u"cirugia", u"cirugía", u"cirurgia", u"surgery"}))
        return Kind::Surgery;
    if (has(t, {u"check", u"consulta"}))
        return has(t, InHome) ? Kind::HomeConsultation : Kind::Query;
    if (has(t, {u"peluquería", u"peluqueria", u"hair", u"cabeleireiro", u"cabeleireira"}))
        return Kind::Grooming;
    if (has(t, {u"ecografía", u"ecografia", u"ultrasound", u"ultra-som"}))
        return Kind::Ultrasound;
    if (has(t, {u"radiografía", u"radiografia", u"x-ray", u"raios x"}))
        return Kind::Xray;
    if (has(t, vaccines))
        return has(t, InHome) ? Kind::VaccineInHome : Kind::Vaccine;
    if (t.contains(s(text::AccommodationAndFood), Qt::CaseInsensitive))
        return Kind::Ration;
    // "usuário" is the Portuguese spelling.
    if (has(t, {u"user", u"usuario", u"usuário"}))
        return Kind::User;
    return Kind::Other;
}

} // namespace

QString agenda::taskConcept(Sesion &s, int tip, qint64 artaux)
{
    if (tip == TaskKind::Ration)
        return s(text::AccommodationAndFood);
    if (tip == TaskKind::UserTask)
        return s(text::UserTask);
    if (tip < 0)
        return taskReason(s, tip);
    const QString name = LeerCampo(s, "finanzas", "articulos", tip, "nom");
    if (!name.isEmpty() || artaux <= 0)
        return name;
    return s.finanzas
        ->read("SELECT FLCategorias.Nom FROM Articulos LEFT JOIN FLCategorias ON Articulos.IDCat "
               "= FLCategorias.IDCat WHERE Articulos.Ida = ?",
               artaux)
        .toText();
}

QString agenda::taskReason(const Sesion &s, int tip)
{
    switch (tip) {
    case TaskKind::FoodShortage:
        return s(text::FoodOfferReminder);
    case TaskKind::DoseReminder:
        return s(text::PlannedProductReminder);
    case TaskKind::DebtReminder:
        return s(text::DebtReminder);
    case TaskKind::SettleArrears:
    case TaskKind::PrepaidInArrears:
        return s(text::PrepaidReminder);
    case TaskKind::Restock:
        return s(text::TaskTextsRestock);
    case TaskKind::Birthday:
        return s(text::BirthdayGreeting);
    case TaskKind::Appointment:
        return s(text::AppointmentReminder);
    case TaskKind::AppointmentReminder:
        return s(text::RequestedByInternet);
    case TaskKind::DiscontinuedDose:
        return s(text::DiscontinuedReminder);
    case TaskKind::FeaturedBirthday:
        return s(text::FeaturedBirthdayGreeting);
    case TaskKind::NewClient:
        return s(text::NewClientGreeting);
    case TaskKind::Frequent:
        return s(text::FrequentClientMail);
    default:
        return {};
    }
}

QString agenda::channelInWords(const Sesion &s, int medio)
{
    return medio >= 1 && medio <= 3 ? s(text::ByMail + medio - 1) : QString();
}

QString agenda::agendaIcon(const Sesion &s, const QString &item)
{
    switch (kindOf(
        s, item,
        {u"vacuna", u"vacinas", u"vaccination", u"vaccines", u"anticoncepti", u"antiparasi"})) {
    case Kind::Food:
        return u"AmbAli"_s;
    case Kind::Shift:
        return u"buscarperro"_s;
    case Kind::Surgery:
        return u"TurnoCir"_s;
    case Kind::Query:
        return u"TurnoCon"_s;
    case Kind::HomeConsultation:
        return u"AmbCon"_s;
    case Kind::Grooming:
        return u"TurnoPel"_s;
    case Kind::Ultrasound:
        return u"TurnoEco"_s;
    case Kind::Xray:
        return u"TurnoRay"_s;
    case Kind::Vaccine:
        return u"TurnoVac"_s;
    case Kind::VaccineInHome:
        return u"AmbVac"_s;
    case Kind::Ration:
        return u"alimentarhos"_s;
    case Kind::User:
        return u"tareausuarios"_s;
    case Kind::Other:
        break;
    }
    return {};
}

QString agenda::sheetIcon(const Sesion &s, const QString &item)
{
    switch (
        kindOf(s, item, {u"vacuna", u"vacinas", u"vaccination", u"vacunacion", u"vacunación"})) {
    case Kind::Food:
        return u"AgendaCom"_s;
    case Kind::Shift:
        return u"AgendaBus"_s;
    case Kind::Surgery:
        return u"AgendaCir"_s;
    case Kind::Query:
    case Kind::HomeConsultation:
        return u"AgendaCon"_s;
    case Kind::Grooming:
        return u"AgendaPel"_s;
    case Kind::Ultrasound:
        return u"AgendaEco"_s;
    case Kind::Xray:
        return u"AgendaRay"_s;
    case Kind::Vaccine:
    case Kind::VaccineInHome:
        return u"AgendaVac"_s;
    case Kind::Ration:
        return u"alimentarhos"_s;
    case Kind::User:
    case Kind::Other:
        break;
    }
    return {};
}

Subject agenda::taskSubject(int tip)
{
    switch (tip) {
    case TaskKind::FoodShortage:
    case TaskKind::DoseReminder:
    case TaskKind::Birthday:
    case TaskKind::DiscontinuedDose:
    case TaskKind::FeaturedBirthday:
        return Subject::Patient;
    case TaskKind::DebtReminder:
    case TaskKind::SettleArrears:
    case TaskKind::Appointment:
    case TaskKind::AppointmentReminder:
    case TaskKind::PrepaidInArrears:
    case TaskKind::NewClient:
    case TaskKind::Frequent:
        return Subject::Client;
    case TaskKind::Restock:
        return Subject::Supplier;
    case TaskKind::UserTask:
        return Subject::User;
    default:
        return tip > 0 ? Subject::Patient : Subject::Nobody;
    }
}
