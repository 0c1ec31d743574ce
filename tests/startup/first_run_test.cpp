#include "startup/first_run.h"

#include "startup/checks.h"

#include <QRegularExpression>

using namespace startup;
using namespace Qt::StringLiterals;

namespace
{

struct PrimeraVez : Clinic, testing::WithParamInterface<store::Language> {
    PrimeraVez() : Clinic(GetParam()) {}
};

struct FirstRegistration : Clinic {
};

} // namespace

TEST_P(PrimeraVez, seeds_products_that_the_plans_and_categories_rely_on)
{
    seedFirstRun(s);
    EXPECT_EQ(
        allRows(*s.finanzas,
                "select ida, idcat from Articulos where ida in (1, 4, 12, 35, 37) order by ida"),
        u"1|3\n4|3\n12|4\n35|5\n37|5\n");

    // Numbered from 1 without gaps, and the counter agrees.
    const int articulos = s.finanzas->read("select count(*) from Articulos").toInt();
    EXPECT_GE(articulos, 37);
    EXPECT_EQ(s.finanzas->read("select max(ida) from Articulos").toInt(), articulos);
    EXPECT_EQ(s.configuracion["contadorarticulo"].toInt(), articulos);
    EXPECT_EQ(allRows(*s.finanzas, "select ida from Articulos where cb <> ida & ''"), QString());
    EXPECT_EQ(allRows(*s.finanzas, "select ida from Articulos where len(uni) > 2 and canuni <= 0"),
              QString());

    // All services and nothing else are in Servicios, and so is every delivery service.
    EXPECT_EQ(allRows(*s.finanzas, "select ida from Articulos where idcat = 2 order by ida"),
              allRows(*s.finanzas, "select ida from Servicios order by ida"));
    EXPECT_EQ(allRows(*s.finanzas,
                      "select FLCategorias.idcat, Servicios.tipo from FLCategorias inner"
                      " join Servicios on FLCategorias.idserv = Servicios.ida"
                      " order by FLCategorias.idcat"),
              u"1|2\n3|2\n4|2\n5|2\n");

    // Every product of a chain belongs to the plan's category.
    for (Recordset r = s.morvane->OpenSnapshot("select * from Regimen"); !r.EOF_(); r.MoveNext()) {
        const QStringList chain = r["Reg"].toText().split(u',');
        for (qsizetype i = 0; i + 2 < chain.size(); i += 2)
            EXPECT_EQ(
                s.finanzas->read("select idcat from Articulos where ida = ?", chain[i].toInt()),
                r["Tip"])
                << chain[i].toStdString();
        EXPECT_EQ(chain[chain.size() - 2], u"9999");
    }
}

TEST_P(PrimeraVez, names_everything_in_the_language_and_within_its_width)
{
    seedFirstRun(s);
    const auto i = size_t(GetParam());
    const QString categories[] = {u"Servicios"_s, u"Serviços"_s, u"Services"_s};
    EXPECT_EQ(s.finanzas->read("select nom from FLCategorias where idcat = 2").toText(),
              categories[i]);
    const QString counted[] = {u"Contado"_s, u"Cash"_s, u"Cash"_s};
    EXPECT_EQ(s.configuracion["EntradaMoneda"].toText(), counted[i]);
    const QString plan[] = {u"Vec. Fel. < 3 meses"_s, u"Vac. fel. < 3 meses"_s,
                            u"Feline vac. < 3 months"_s};
    EXPECT_EQ(s.morvane->read("select Nom from Regimen where Idr = 17").toText(), plan[i]);
    for (Base *base : {s.morvane.get(), s.finanzas.get()})
        EXPECT_EQ(overlongTexts(*base), QString());

    // Names must differ in more than letter case, and must not be numbers.
    QStringList names;
    for (Recordset r = s.finanzas->OpenSnapshot("select nom from Articulos"); !r.EOF_();
         r.MoveNext()) {
        const QString name = r["nom"].toText().toCaseFolded();
        EXPECT_FALSE(name.isEmpty() || names.contains(name) || name.contains(u'\''))
            << name.toStdString();
        names.append(name);
    }

    // One service for each picture of the agenda, by the words that select it.
    const QString words[][8] = {
        {u"entrega de alimento"_s, u"retiro"_s, u"cirugía"_s, u"consulta a domicilio"_s,
         u"peluquería"_s, u"ecografía"_s, u"radiografía"_s, u"vacunación"_s},
        {u"alimento"_s, u"ir buscar"_s, u"cirurgia"_s, u"consulta em casa"_s, u"cabeleireiro"_s,
         u"ultra-som"_s, u"raios x"_s, u"vacinas"_s},
        {u"food delivery"_s, u"patient withdrawal"_s, u"surgery"_s, u"check at home"_s, u"hair"_s,
         u"ultrasound"_s, u"x-ray"_s, u"vaccination"_s}};
    for (const QString &word : words[i])
        EXPECT_EQ(names.filter(word).isEmpty(), false) << word.toStdString();
}

TEST_P(PrimeraVez, fills_every_letter_with_tags_that_can_be_resolved)
{
    seedFirstRun(s);
    static const QStringList tags{u"nomcli"_s, u"dircli"_s, u"nommas"_s, u"tramas"_s, u"provet"_s,
                                  u"dirvet"_s, u"telvet"_s, u"razvet"_s, u"fecdia"_s, u"hortur"_s};
    const jet::Table *t = s.morvane->catalogue().find("Configuracion");
    int letters = 0;
    for (const jet::Column &c : t->columns) {
        if (!QString::fromStdString(c.name).startsWith(u"mensajeria", Qt::CaseInsensitive))
            continue;
        SCOPED_TRACE(c.name);
        ++letters;
        const QString text = s.configuracion[c.name].toText();
        EXPECT_FALSE(text.isEmpty());
        EXPECT_EQ(text.count(u'<'), text.count(u'>') - text.count(u"->"));
        static const QRegularExpression tag(u"<([^>]*)>"_s);
        for (const auto &m : tag.globalMatch(text))
            EXPECT_TRUE(tags.contains(m.captured(1))) << m.captured(1).toStdString();
        // Mails start with a greeting; letters name their addressee or need none.
        if (!c.name.ends_with("carta")) {
            EXPECT_TRUE(text.section(u'\n', 0, 0).endsWith(u" <nomcli>:"));
        }
    }
    EXPECT_EQ(letters, 14);
}

TEST_P(PrimeraVez, broken_off_and_run_again_adds_nothing_twice)
{
    seedFirstRun(s);
    const QString finanzas = dump(*s.finanzas);
    const QString morvane = dump(*s.morvane);
    seedFirstRun(s);
    EXPECT_EQ(dump(*s.finanzas), finanzas);
    EXPECT_EQ(dump(*s.morvane), morvane);

    // Even if the program's language has changed in between.
    s.texts = store::Texts(GetParam() == store::Language::English ? store::Language::Spanish
                                                                  : store::Language::English);
    seedFirstRun(s);
    EXPECT_NE(dump(*s.finanzas), finanzas);
    s.texts = store::Texts(GetParam());
    seedFirstRun(s);
    EXPECT_EQ(dump(*s.finanzas), finanzas);
    EXPECT_EQ(dump(*s.morvane), morvane);
}

INSTANTIATE_TEST_SUITE_P(Idiomas, PrimeraVez,
                         testing::Values(store::Language::Spanish, store::Language::Portuguese,
                                         store::Language::English),
                         [](const auto &i) { return store::languageCode(i.param).toStdString(); });

TEST_F(FirstRegistration, WantsAUserAndTheSamePasswordTwice)
{
    const std::tuple<QString, QString, QString, int> cases[] = {
        {{}, {}, {}, 2259},
        {u" ' "_s, {}, {}, 2259}, // nothing remains after cleaning
        {u"Ana"_s, {}, {}, 0},
        {u"Ana"_s, u"secret"_s, {}, 5030},
        {u"Ana"_s, u"secret"_s, u"Secret"_s, 5030},
        {u"Ana"_s, u"secret"_s, u"secret"_s, 0}};
    for (const auto &[user, one, other, missing] : cases)
        EXPECT_EQ(validateFirstRun({u"Clinic"_s, {}, {}, user, one, other}), missing)
            << (user + u' ' + one + u' ' + other).toStdString();
}

TEST_F(FirstRegistration, KeepsOneClinicAndOneSupervisorHoweverOftenItIsTried)
{
    registerFirstRun(s, {u"First try"_s, {}, {}, u"Bruno"_s, {}, {}});
    registerFirstRun(s, {{}, u"12 O'Brien St"_s, u"555-0100"_s, u"Ana"_s, u"x"_s, u"x"_s});
    EXPECT_EQ(allRows(*s.morvane, "select nom, pro, dir, tel from Veterinaria"),
              u"Ana|Ana|12 O Brien St|555-0100\n");
    EXPECT_EQ(allRows(*s.morvane, "select idu, nom, up, ut from Usuarios"), u"2|Ana|x|2\n");
    EXPECT_EQ(s.configuracion["contadorUsuarios"].toInt(), 2);
}
