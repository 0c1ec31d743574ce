#include "agenda/task_texts.h"
#include "agenda_clinic.h"
#include "store/lookups.h"
#include "texts/texts.h"

using namespace agenda;
using namespace Qt::StringLiterals;

namespace
{

class Texts : public ClinicWithAgenda, public testing::WithParamInterface<store::Language>
{
protected:
    Texts() : ClinicWithAgenda(GetParam()) {}
};

struct Case {
    QStringView item, agenda, sheet;
};

} // namespace

TEST_P(Texts, TheFirstWordFoundChoosesThePicture)
{
    const Case cases[] = {
        {u"Entrega de ALIMENTO a domicilio", u"AmbAli", u"AgendaCom"},
        {u"Food delivery", u"AmbAli", u"AgendaCom"},
        {u"Entrega de paciente", u"buscarperro", u"AgendaBus"},
        {u"Ir buscar o animal", u"buscarperro", u"AgendaBus"},
        {u"Patient withdrawal", u"buscarperro", u"AgendaBus"},
        {u"CIRUGÍA mayor", u"TurnoCir", u"AgendaCir"},
        {u"Cirurgia", u"TurnoCir", u"AgendaCir"},
        {u"Surgery check", u"TurnoCir", u"AgendaCir"}, // surgery comes before check
        {u"Consulta", u"TurnoCon", u"AgendaCon"},
        {u"Consulta em casa", u"AmbCon", u"AgendaCon"},
        {u"Check at home", u"AmbCon", u"AgendaCon"},
        {u"Peluquería", u"TurnoPel", u"AgendaPel"},
        {u"Cabeleireira", u"TurnoPel", u"AgendaPel"},
        {u"Ecografía", u"TurnoEco", u"AgendaEco"},
        {u"Ultra-som", u"TurnoEco", u"AgendaEco"},
        {u"Raios X", u"TurnoRay", u"AgendaRay"},
        {u"X-Ray", u"TurnoRay", u"AgendaRay"},
        {u"Vacunación", u"TurnoVac", u"AgendaVac"},
        {u"Aplicação de vacinas em casa", u"AmbVac", u"AgendaVac"},
        // On purpose: the list knows words that the sheet does not.
        {u"Antiparasitario a domicilio", u"AmbVac", u""},
        {u"Vaccines", u"TurnoVac", u""},
        {u"Training", u"", u""},
        {u"", u"", u""},
    };
    for (const Case &c : cases) {
        EXPECT_EQ(agendaIcon(s, c.item.toString()), c.agenda) << c.item.toUtf8().data();
        EXPECT_EQ(sheetIcon(s, c.item.toString()), c.sheet) << c.item.toUtf8().data();
    }
    // The system's own words, in the language of the session.
    EXPECT_EQ(agendaIcon(s, s(text::AccommodationAndFood)), u"alimentarhos"_s);
    EXPECT_EQ(sheetIcon(s, s(text::AccommodationAndFood)), u"alimentarhos"_s);
    EXPECT_EQ(agendaIcon(s, s(text::UserTask)), u"tareausuarios"_s);
    EXPECT_EQ(sheetIcon(s, s(text::UserTask)), QString());
}

INSTANTIATE_TEST_SUITE_P(Languages, Texts,
                         testing::Values(store::Language::Spanish, store::Language::Portuguese,
                                         store::Language::English));

TEST_F(ClinicWithAgenda, AConceptWithoutANameIsTheCategoryOfItsProduct)
{
    s.finanzas->Execute("insert into articulos (ida, idcat, nom) values (204, 2, '')");
    s.finanzas->Execute("insert into articulos (ida, idcat, nom) values (1, 3, 'Rabies')");
    EXPECT_EQ(taskConcept(s, control, 1), u"A check"_s);
    const QString vaccines = taskConcept(s, 204, 1);
    EXPECT_EQ(vaccines, LeerCampo(s, "finanzas", "flcategorias", 3, "nom"));
    EXPECT_FALSE(vaccines.isEmpty());
    EXPECT_EQ(taskConcept(s, 204, 0), QString());
    EXPECT_EQ(taskConcept(s, 30000, 30001), QString());
    EXPECT_EQ(taskConcept(s, -100, 0), s(text::UserTask));
    EXPECT_EQ(taskConcept(s, -47, 0), s(text::AccommodationAndFood));
}

TEST_F(ClinicWithAgenda, EveryReasonHasItsWordsAndItsSubject)
{
    const std::pair<int, int> texts[] = {{-41, 1110}, {-42, 1111}, {-43, 1112}, {-44, 1113},
                                         {-46, 1114}, {-48, 1115}, {-50, 1116}, {-51, 1117},
                                         {-70, 1113}, {-71, 1125}, {-72, 1126}};
    for (const auto &[tip, text] : texts)
        EXPECT_EQ(taskReason(s, tip), s(text)) << tip;
    EXPECT_EQ(taskReason(s, -45), u"Restock the clinic"_s);
    EXPECT_EQ(taskReason(s, -49), u"Answer to a request for an appointment over the Internet"_s);
    EXPECT_EQ(taskReason(s, -99), QString());
    // A user's id must never be read as a patient's.
    EXPECT_EQ(taskSubject(-100), Subject::User);
    EXPECT_EQ(taskSubject(-47), Subject::Nobody);
    EXPECT_EQ(taskSubject(-42), Subject::Patient);
    EXPECT_EQ(taskSubject(-43), Subject::Client);
    EXPECT_EQ(channelInWords(s, 0), QString());
    EXPECT_EQ(channelInWords(s, 2), s(text::ByLetter));
    EXPECT_EQ(channelInWords(s, 4), QString());
}
