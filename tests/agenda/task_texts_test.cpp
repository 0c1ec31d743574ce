#include "agenda/task_texts.h"
#include "agenda_clinic.h"
#include "store/lookups.h"

using namespace Qt::StringLiterals;

namespace
{

class Textos_ : public ClinicaConAgenda, public testing::WithParamInterface<Idioma>
{
protected:
    Textos_() : ClinicaConAgenda(GetParam()) {}
};

struct Caso {
    QStringView concepto, agenda, hoja;
};

} // namespace

TEST_P(Textos_, TheFirstWordFoundChoosesThePicture)
{
    const Caso casos[] = {
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
        // The list knows words that the sheet does not; intended.
        {u"Antiparasitario a domicilio", u"AmbVac", u""},
        {u"Vaccines", u"TurnoVac", u""},
        {u"Training", u"", u""},
        {u"", u"", u""},
    };
    for (const Caso &c : casos) {
        EXPECT_EQ(IconoDeAgenda(s, c.concepto.toString()), c.agenda) << c.concepto.toUtf8().data();
        EXPECT_EQ(IconoDeHoja(s, c.concepto.toString()), c.hoja) << c.concepto.toUtf8().data();
    }
    // The system's own words, in the language of the session.
    EXPECT_EQ(IconoDeAgenda(s, s(21)), u"alimentarhos"_s);
    EXPECT_EQ(IconoDeHoja(s, s(21)), u"alimentarhos"_s);
    EXPECT_EQ(IconoDeAgenda(s, s(1109)), u"tareausuarios"_s);
    EXPECT_EQ(IconoDeHoja(s, s(1109)), QString());
}

INSTANTIATE_TEST_SUITE_P(Languages, Textos_,
                         testing::Values(Idioma::Espanol, Idioma::Portugues, Idioma::Ingles));

TEST_F(ClinicaConAgenda, AConceptWithoutANameIsTheCategoryOfItsProduct)
{
    s.finanzas->Execute("insert into articulos (ida, idcat, nom) values (204, 2, '')");
    s.finanzas->Execute("insert into articulos (ida, idcat, nom) values (1, 3, 'Rabies')");
    EXPECT_EQ(ConceptoDeTarea(s, control, 1), u"A check"_s);
    const QString vacunas = ConceptoDeTarea(s, 204, 1);
    EXPECT_EQ(vacunas, LeerCampo(s, "finanzas", "flcategorias", 3, "nom"));
    EXPECT_FALSE(vacunas.isEmpty());
    EXPECT_EQ(ConceptoDeTarea(s, 204, 0), QString());
    EXPECT_EQ(ConceptoDeTarea(s, 30000, 30001), QString());
    EXPECT_EQ(ConceptoDeTarea(s, -100, 0), s(1109));
    EXPECT_EQ(ConceptoDeTarea(s, -47, 0), s(21));
}

TEST_F(ClinicaConAgenda, EveryReasonHasItsWordsAndItsSubject)
{
    const std::pair<int, int> textos[] = {{-41, 1110}, {-42, 1111}, {-43, 1112}, {-44, 1113},
                                          {-46, 1114}, {-48, 1115}, {-50, 1116}, {-51, 1117},
                                          {-70, 1113}, {-71, 1125}, {-72, 1126}};
    for (const auto &[tip, texto] : textos)
        EXPECT_EQ(MotivoDeTarea(s, tip), s(texto)) << tip;
    EXPECT_EQ(MotivoDeTarea(s, -45), u"Restock the clinic"_s);
    EXPECT_EQ(MotivoDeTarea(s, -49), u"Answer to a request for an appointment over the Internet"_s);
    EXPECT_EQ(MotivoDeTarea(s, -99), QString());
    // A user's id must never be read as a patient's.
    EXPECT_EQ(SujetoDeTarea(-100), Sujeto::Usuario);
    EXPECT_EQ(SujetoDeTarea(-47), Sujeto::Nadie);
    EXPECT_EQ(SujetoDeTarea(-42), Sujeto::Paciente);
    EXPECT_EQ(SujetoDeTarea(-43), Sujeto::Cliente);
    EXPECT_EQ(MedioEnPalabras(s, 0), QString());
    EXPECT_EQ(MedioEnPalabras(s, 2), s(1119));
    EXPECT_EQ(MedioEnPalabras(s, 4), QString());
}
