#include "startup/first_run.h"

#include "startup/checks.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace
{

struct PrimeraVez : Clinica, testing::WithParamInterface<Idioma> {
    PrimeraVez() : Clinica(GetParam()) {}
};

struct Registro : Clinica {
};

} // namespace

TEST_P(PrimeraVez, seeds_products_that_the_plans_and_categories_rely_on)
{
    SembrarPrimeraVez(s);
    EXPECT_EQ(
        Filas(*s.finanzas,
              "select ida, idcat from Articulos where ida in (1, 4, 12, 35, 37) order by ida"),
        u"1|3\n4|3\n12|4\n35|5\n37|5\n");

    // Numbered without a gap from 1, and the counter knows.
    const int articulos = s.finanzas->Leer("select count(*) from Articulos").toInt();
    EXPECT_GE(articulos, 37);
    EXPECT_EQ(s.finanzas->Leer("select max(ida) from Articulos").toInt(), articulos);
    EXPECT_EQ(s.configuracion["contadorarticulo"].toInt(), articulos);
    EXPECT_EQ(Filas(*s.finanzas, "select ida from Articulos where cb <> ida & ''"), QString());
    EXPECT_EQ(Filas(*s.finanzas, "select ida from Articulos where len(uni) > 2 and canuni <= 0"),
              QString());

    // Services and only they have a time and a place, and what goes to the client's home is one.
    EXPECT_EQ(Filas(*s.finanzas, "select ida from Articulos where idcat = 2 order by ida"),
              Filas(*s.finanzas, "select ida from Servicios order by ida"));
    EXPECT_EQ(Filas(*s.finanzas, "select FLCategorias.idcat, Servicios.tipo from FLCategorias inner"
                                 " join Servicios on FLCategorias.idserv = Servicios.ida"
                                 " order by FLCategorias.idcat"),
              u"1|2\n3|2\n4|2\n5|2\n");

    // Every product of a chain belongs to the plan's category.
    for (Recordset r = s.morvane->OpenSnapshot("select * from Regimen"); !r.EOF_(); r.MoveNext()) {
        const QStringList cadena = r["Reg"].toText().split(u',');
        for (qsizetype i = 0; i + 2 < cadena.size(); i += 2)
            EXPECT_EQ(
                s.finanzas->Leer("select idcat from Articulos where ida = ?", cadena[i].toInt()),
                r["Tip"])
                << cadena[i].toStdString();
        EXPECT_EQ(cadena[cadena.size() - 2], u"9999");
    }
}

TEST_P(PrimeraVez, names_everything_in_the_language_and_within_its_width)
{
    SembrarPrimeraVez(s);
    const auto i = size_t(GetParam());
    const QString categorias[] = {u"Servicios"_s, u"Serviços"_s, u"Services"_s};
    EXPECT_EQ(s.finanzas->Leer("select nom from FLCategorias where idcat = 2").toText(),
              categorias[i]);
    const QString contado[] = {u"Contado"_s, u"Cash"_s, u"Cash"_s};
    EXPECT_EQ(s.configuracion["EntradaMoneda"].toText(), contado[i]);
    const QString plan[] = {u"Vec. Fel. < 3 meses"_s, u"Vac. fel. < 3 meses"_s,
                            u"Feline vac. < 3 months"_s};
    EXPECT_EQ(s.morvane->Leer("select Nom from Regimen where Idr = 17").toText(), plan[i]);
    for (Base *base : {s.morvane.get(), s.finanzas.get()})
        EXPECT_EQ(TextosDemasiadoLargos(*base), QString());

    // Names are told apart without regard to letter case; a number is no name.
    QStringList nombres;
    for (Recordset r = s.finanzas->OpenSnapshot("select nom from Articulos"); !r.EOF_();
         r.MoveNext()) {
        const QString nombre = r["nom"].toText().toCaseFolded();
        EXPECT_FALSE(nombre.isEmpty() || nombres.contains(nombre) || nombre.contains(u'\''))
            << nombre.toStdString();
        nombres.append(nombre);
    }

    // One service for each picture of the agenda, by the words that it goes by.
    const QString palabras[][8] = {
        {u"entrega de alimento"_s, u"retiro"_s, u"cirugía"_s, u"consulta a domicilio"_s,
         u"peluquería"_s, u"ecografía"_s, u"radiografía"_s, u"vacunación"_s},
        {u"alimento"_s, u"ir buscar"_s, u"cirurgia"_s, u"consulta em casa"_s, u"cabeleireiro"_s,
         u"ultra-som"_s, u"raios x"_s, u"vacinas"_s},
        {u"food delivery"_s, u"patient withdrawal"_s, u"surgery"_s, u"check at home"_s, u"hair"_s,
         u"ultrasound"_s, u"x-ray"_s, u"vaccination"_s}};
    for (const QString &palabra : palabras[i])
        EXPECT_EQ(nombres.filter(palabra).isEmpty(), false) << palabra.toStdString();
}

TEST_P(PrimeraVez, fills_every_letter_with_tags_that_can_be_resolved)
{
    SembrarPrimeraVez(s);
    static const QStringList tags{u"nomcli"_s, u"dircli"_s, u"nommas"_s, u"tramas"_s, u"provet"_s,
                                  u"dirvet"_s, u"telvet"_s, u"razvet"_s, u"fecdia"_s, u"hortur"_s};
    const jet::Tabla *t = s.morvane->Catalogo().Buscar("Configuracion");
    int cartas = 0;
    for (const jet::Columna &c : t->columnas) {
        if (!QString::fromStdString(c.nombre).startsWith(u"mensajeria", Qt::CaseInsensitive))
            continue;
        SCOPED_TRACE(c.nombre);
        ++cartas;
        const QString texto = s.configuracion[c.nombre].toText();
        EXPECT_FALSE(texto.isEmpty());
        EXPECT_EQ(texto.count(u'<'), texto.count(u'>') - texto.count(u"->"));
        static const QRegularExpression tag(u"<([^>]*)>"_s);
        for (const auto &m : tag.globalMatch(texto))
            EXPECT_TRUE(tags.contains(m.captured(1))) << m.captured(1).toStdString();
        // What is mailed greets; a letter names its addressee or needs none.
        if (!c.nombre.ends_with("carta")) {
            EXPECT_TRUE(texto.section(u'\n', 0, 0).endsWith(u" <nomcli>:"));
        }
    }
    EXPECT_EQ(cartas, 14);
}

TEST_P(PrimeraVez, broken_off_and_run_again_adds_nothing_twice)
{
    SembrarPrimeraVez(s);
    const QString finanzas = Volcado(*s.finanzas);
    const QString morvane = Volcado(*s.morvane);
    SembrarPrimeraVez(s);
    EXPECT_EQ(Volcado(*s.finanzas), finanzas);
    EXPECT_EQ(Volcado(*s.morvane), morvane);

    // Also when the program has changed its language in between.
    s.textos = Textos(GetParam() == Idioma::Ingles ? Idioma::Espanol : Idioma::Ingles);
    SembrarPrimeraVez(s);
    EXPECT_NE(Volcado(*s.finanzas), finanzas);
    s.textos = Textos(GetParam());
    SembrarPrimeraVez(s);
    EXPECT_EQ(Volcado(*s.finanzas), finanzas);
    EXPECT_EQ(Volcado(*s.morvane), morvane);
}

INSTANTIATE_TEST_SUITE_P(Idiomas, PrimeraVez,
                         testing::Values(Idioma::Espanol, Idioma::Portugues, Idioma::Ingles),
                         [](const auto &i) { return CodigoDeIdioma(i.param).toStdString(); });

TEST_F(Registro, WantsAUserAndTheSamePasswordTwice)
{
    const std::tuple<QString, QString, QString, int> casos[] = {
        {{}, {}, {}, 2259},
        {u" ' "_s, {}, {}, 2259}, // nothing is left of it
        {u"Ana"_s, {}, {}, 0},
        {u"Ana"_s, u"secret"_s, {}, 5030},
        {u"Ana"_s, u"secret"_s, u"Secret"_s, 5030},
        {u"Ana"_s, u"secret"_s, u"secret"_s, 0}};
    for (const auto &[usuario, una, otra, falta] : casos)
        EXPECT_EQ(ValidarPrimeraVez({u"Clinic"_s, {}, {}, usuario, una, otra}), falta)
            << (usuario + u' ' + una + u' ' + otra).toStdString();
}

TEST_F(Registro, KeepsOneClinicAndOneSupervisorHoweverOftenItIsTried)
{
    RegistrarPrimeraVez(s, {u"First try"_s, {}, {}, u"Bruno"_s, {}, {}});
    RegistrarPrimeraVez(s, {{}, u"12 O'Brien St"_s, u"555-0100"_s, u"Ana"_s, u"x"_s, u"x"_s});
    EXPECT_EQ(Filas(*s.morvane, "select nom, pro, dir, tel from Veterinaria"),
              u"Ana|Ana|12 O Brien St|555-0100\n");
    EXPECT_EQ(Filas(*s.morvane, "select idu, nom, up, ut from Usuarios"), u"2|Ana|x|2\n");
    EXPECT_EQ(s.configuracion["contadorUsuarios"].toInt(), 2);
}
