#include "clients/frmbusqueda.h"
#include "clients/frmbusquedarapida.h"
#include "clients/quick_search.h"
#include "clients/search.h"
#include "support/clinic.h"
#include "ui/form_registry.h"
#include "ui/grid.h"
#include "ui/help_line.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <set>

using namespace Qt::StringLiterals;

namespace
{

class Searches : public Clinica
{
protected:
    Searches()
    {
        const auto run = [this](const char *sql) { s.clientes->Execute(sql); };
        run("insert into CLLocalidad (id, nom) values (1, 'Centro')");
        run("insert into CLLocalidad (id, nom) values (2, 'Cerro')");
        run("insert into CLDepartamento (id, nom) values (1, 'Sur')");
        run("insert into CLMarketing (id, nom) values (1, 'Radio')");
        run("insert into MLRazas (id, nom) values (1, 'Caniche')");
        run("insert into MLPelajes (id, nom) values (1, 'Atigrado')");
        run("insert into Clientes (idc, ayn, dir, loc, dep, codp2, codt2, tel2, telc2, email, "
            "mark, obs) values (1, 'García Ana', 'Rivera 20', 1, 1, '11300', '02', '4812-345, "
            "4900', '099 123-456', 'ana@correo.example', 1, 'paga tarde')");
        run("insert into Clientes (idc, ayn, dir, loc, tel2) values (2, 'Álvarez Luis', 'Colón "
            "7', 2, '4777')");
        run("insert into Clientes (idc, ayn, dir) values (3, 'Zeta 50% [x] * # ?', 'Otra')");
        patient("10, 1, 'Fido', 1, 1, 1, 'mancha', '981000077', -1, 0, 0, 'muerde'");
        patient("11, 1, 'Mora', 2, 0, 0, '', '', 0, -1, 0, ''");
        patient("12, 2, 'Gardel', 1, 0, 0, '', '', 0, 0, -1, ''");
        patient("13, 99, 'Edgar', 1, 0, 0, '', '', 0, 0, 0, ''"); // without an owner
    }

    void patient(const std::string &values)
    {
        s.clientes->Execute("insert into Mascotas (idm, idc, nom, esp, raz, pel, car, Chip, ped, "
                            "rep, dec, obs) values ("
                            + values + ")");
    }

    Condicion by(Busqueda what, const QString &criterion, const QString &text) const
    {
        const auto all = CriteriosDe(what);
        for (size_t i = 0; i < all.size(); ++i)
            if (s(all[i].nombre) == criterion)
                return {int(i), text};
        ADD_FAILURE() << criterion.toStdString();
        return {};
    }

    static QString ids(const Hallazgo &found)
    {
        QStringList all;
        for (const QList<Valor> &cells : found.filas)
            all << cells.front().toText();
        return all.join(u' ');
    }
    /// The ids found, which must be the same while the user types.
    QString search(Busqueda what, const Condiciones &asked)
    {
        const QString all = ids(Buscar(s, what, asked));
        EXPECT_EQ(ids(BuscarAlTeclear(s, what, asked)), all);
        return all;
    }
    QString patients(const QString &criterion, const QString &text)
    {
        return search(Busqueda::Mascotas, {by(Busqueda::Mascotas, criterion, text), {}});
    }
    QString clients(const QString &criterion, const QString &text)
    {
        return search(Busqueda::Clientes, {by(Busqueda::Clientes, criterion, text), {}});
    }
};

} // namespace

TEST_F(Searches, EachCriterionFindsItsRows)
{
    const std::vector<std::array<QString, 3>> ofPatients{
        {u"Name"_s, u"GAR"_s, u"13 12"_s},
        {u"Name"_s, u"x"_s, u""_s},
        {u"Breed"_s, u"nich"_s, u"10"_s},
        {u"Especies"_s, u"fel"_s, u"11"_s},
        {u"Fur"_s, u"tigr"_s, u"10"_s},
        {u"Features"_s, u"man"_s, u"10"_s},
        {u"Chip"_s, u"0077"_s, u"10"_s},
        {u"Owner"_s, u"lu"_s, u"12"_s},
        {u"Owner"_s, u"á"_s, u"12"_s},
        {u"Address"_s, u"riv"_s, u"10 11"_s},
        {u"Sub region"_s, u"ce"_s, u"10 12 11"_s},
        {u"Phone"_s, u"2-3"_s, u"10 11"_s},
        {u"Mobile phone"_s, u"9912"_s, u""_s},
        {u"Mobile phone"_s, u"099 1"_s, u"10 11"_s},
        {u"Notes"_s, u"muer"_s, u"10"_s},
        {u"Pedigree"_s, u"1"_s, u"10"_s},
        {u"Breeder"_s, u"1"_s, u"11"_s},
        {u"Death"_s, u"2"_s, u"13 10 11"_s},
    };
    for (const auto &[criterion, text, expected] : ofPatients)
        EXPECT_EQ(patients(criterion, text), expected) << (criterion + u' ' + text).toStdString();

    const std::vector<std::array<QString, 3>> ofClients{
        {u"Name"_s, u"a"_s, u"2 1 3"_s},       {u"Address"_s, u"COLÓN"_s, u"2"_s},
        {u"Sub region"_s, u"cer"_s, u"2"_s},   {u"Post code"_s, u"113"_s, u"1"_s},
        {u"Area code"_s, u"2"_s, u"1"_s},      {u"Phone"_s, u"4"_s, u"2 1"_s},
        {u"Mobile phone"_s, u"456"_s, u"1"_s}, {u"Email"_s, u"@correo"_s, u"1"_s},
        {u"Marketing"_s, u"rad"_s, u"1"_s},    {u"Notes"_s, u"tarde"_s, u"1"_s},
    };
    for (const auto &[criterion, text, expected] : ofClients)
        EXPECT_EQ(clients(criterion, text), expected) << (criterion + u' ' + text).toStdString();
}

TEST_F(Searches, CellsStandUnderTheirTitles)
{
    const auto row = [this](Busqueda what, const QString &name) {
        const Hallazgo found = Buscar(s, what, {Condicion{0, name}, {}});
        QStringList cells;
        for (const Valor &v : found.filas.at(0))
            cells << v.toText();
        EXPECT_EQ(cells.size(), qsizetype(TitulosDe(what).size()));
        return cells.join(u'|');
    };
    EXPECT_EQ(row(Busqueda::Mascotas, u"fido"_s),
              u"10|Fido|García Ana|Caniche|Canino|Atigrado|mancha|981000077|-1|0|0|Rivera 20|"
              "Centro|4812-345, 4900|099 123-456|muerde"_s);
    EXPECT_EQ(row(Busqueda::Clientes, u"ana"_s),
              u"1|García Ana|Rivera 20|Centro|Sur|11300|02|4812-345, 4900|099 123-456|"
              "ana@correo.example|Radio|paga tarde"_s);
}

TEST_F(Searches, BothConditionsMustHold)
{
    const auto both = [this](const Condicion &a, const Condicion &b) {
        return search(Busqueda::Mascotas, {a, b});
    };
    const auto owner = by(Busqueda::Mascotas, u"Owner"_s, u"ana"_s);
    EXPECT_EQ(both(owner, by(Busqueda::Mascotas, u"Name"_s, u"mor"_s)), u"11");
    EXPECT_EQ(both(owner, by(Busqueda::Mascotas, u"Name"_s, u"gar"_s)), u"");
    EXPECT_EQ(both(owner, by(Busqueda::Mascotas, u"Sub region"_s, u"cen"_s)), u"10 11");
    EXPECT_EQ(both({}, by(Busqueda::Mascotas, u"Breed"_s, u"can"_s)), u"10");
    EXPECT_FALSE(Buscar(s, Busqueda::Mascotas, {}).buscado);
}

TEST_F(Searches, AStarStandsForAnythingAndOtherSignsForThemselves)
{
    EXPECT_EQ(clients(u"Name"_s, u"gar*ana"_s), u"1");
    EXPECT_EQ(clients(u"Name"_s, u"*"_s), u"2 1 3");
    for (const QString &text : {u"#"_s, u"?"_s, u"[x]"_s, u"50%"_s, u"[x] *"_s, u"z*# ?"_s})
        EXPECT_EQ(clients(u"Name"_s, text), u"3") << text.toStdString();
    EXPECT_EQ(clients(u"Name"_s, u"[a-z]"_s), u"");
    EXPECT_EQ(clients(u"Name"_s, u"a_a"_s), u"");
}

TEST_F(Searches, TypingBringsSomeRowsAndEnterAll)
{
    for (int i = 0; i < FilasAlTeclear + 5; ++i)
        s.clientes->Execute("insert into Clientes (idc, ayn) values (?, ?)", 1000 + i,
                            u"Muchos %1"_s.arg(FilasAlTeclear - i, 4, 10, QChar(u'0')));
    const Condiciones asked{Condicion{0, u"much"_s}, Condicion{}};
    const Hallazgo typed = BuscarAlTeclear(s, Busqueda::Clientes, asked);
    const Hallazgo all = Buscar(s, Busqueda::Clientes, asked);
    EXPECT_TRUE(typed.hayMas);
    EXPECT_EQ(typed.filas.size(), size_t(FilasAlTeclear));
    EXPECT_FALSE(all.hayMas);
    EXPECT_EQ(all.filas.size(), size_t(FilasAlTeclear) + 5);
    for (const Hallazgo *h : {&typed, &all})
        EXPECT_TRUE(std::ranges::is_sorted(
            h->filas, {}, [](const QList<Valor> &cells) { return cells[1].toText(); }));
}

TEST_F(Searches, WhatCannotBeAskedSaysWhy)
{
    const auto why = [this](Busqueda what, const QString &criterion, const QString &text) {
        return BuscarAlTeclear(s, what, {by(what, criterion, text), {}}).impedimento;
    };
    for (const QString &text : {u"3"_s, u"yes"_s, u"12"_s})
        for (const QString &flag : {u"Pedigree"_s, u"Breeder"_s, u"Death"_s})
            EXPECT_EQ(why(Busqueda::Mascotas, flag, text), s(2402)) << flag.toStdString();
    // Intended: the region's clause names a column that is not there.
    EXPECT_TRUE(why(Busqueda::Clientes, u"Region"_s, u"sur"_s).contains(u"Nombre"_s));
    EXPECT_THROW(Buscar(s, Busqueda::Clientes, {by(Busqueda::Clientes, u"Region"_s, u"sur"_s), {}}),
                 ErrorDeAlmacen);
}

TEST_F(Searches, TakingAFindMovesTheSelection)
{
    const auto now = [this] { return u"%1 %2"_s.arg(s.IdGlobal.idc).arg(s.IdGlobal.idm); };
    EXPECT_TRUE(TomarHallado(s, Busqueda::Mascotas, 11));
    EXPECT_EQ(now(), u"1 11");
    EXPECT_TRUE(TomarHallado(s, Busqueda::Clientes, 1)); // its patient stays
    EXPECT_EQ(now(), u"1 11");
    EXPECT_TRUE(TomarHallado(s, Busqueda::Clientes, 2));
    EXPECT_EQ(now(), u"2 12");
    EXPECT_TRUE(TomarHallado(s, Busqueda::Clientes, 3));
    EXPECT_EQ(now(), u"3 0");
    EXPECT_FALSE(TomarHallado(s, Busqueda::Mascotas, 500));
    EXPECT_FALSE(TomarHallado(s, Busqueda::Clientes, 500));
    EXPECT_EQ(now(), u"3 0");
}

TEST(SearchNames, AreToldApartInEveryLanguage)
{
    for (const Idioma language : {Idioma::Espanol, Idioma::Portugues, Idioma::Ingles}) {
        const Textos texts(language);
        for (const Busqueda what : {Busqueda::Mascotas, Busqueda::Clientes}) {
            std::set<QString> names;
            for (const CriterioDeBusqueda &c : CriteriosDe(what))
                names.insert(texts(c.nombre));
            EXPECT_EQ(names.size(), CriteriosDe(what).size());
        }
    }
}

// --- Quick find ------------------------------------------------------------------------------

namespace
{

class QuickFind : public Searches
{
protected:
    IndiceRapido index;

    /// "owner/animal" of each match, dead animals in brackets.
    QString find(const QString &text, int count = 50)
    {
        index.PonerAlDia(s);
        QStringList all;
        for (const HalladoRapido &h : index.Buscar(s, text, count).filas) {
            const QString animal = h.dec ? u'(' + h.mascota + u')' : h.mascota;
            all << h.propietario.section(u' ', 0, 0) + u'/' + animal;
        }
        return all.join(u' ');
    }
};

} // namespace

TEST_F(QuickFind, AnyPieceWillDo)
{
    const std::vector<std::pair<QString, QString>> cases{
        {u"garcia fido"_s, u"García/Fido"_s},
        {u"  FIDO   gar "_s, u"García/Fido"_s},
        {u"alv"_s, u"Álvarez/(Gardel)"_s},
        {u"ANA mora"_s, u"García/Mora"_s},
        {u"fido luis"_s, u""_s},
        {u"9912"_s, u"García/Fido García/Mora"_s},
        {u"099 123-456"_s, u"García/Fido García/Mora"_s},
        {u"4900"_s, u"García/Fido García/Mora"_s},
        {u"3454900"_s, u""_s}, // two numbers are not one
        {u"981000077"_s, u"García/Fido"_s},
        {u"00077 gar"_s, u"García/Fido"_s},
        {u"3"_s, u"Zeta/ García/Fido García/Mora"_s}, // the id before pieces of telephones
        {u"0012"_s, u"Álvarez/(Gardel)"_s},
        {u"zeta"_s, u"Zeta/"_s}, // an owner without animals
        {u"*"_s, u"Zeta/"_s},
        {u"edgar"_s, u""_s}, // no owner to go to
        {u"-"_s, u""_s},
        {u" "_s, u""_s},
    };
    for (const auto &[text, expected] : cases)
        EXPECT_EQ(find(text), expected) << text.toStdString();
}

TEST_F(QuickFind, TheBestStandsFirstAndOwnersTogether)
{
    patient("20, 2, 'Garra', 1, 0, 0, '', '', 0, 0, 0, ''");
    patient("21, 3, 'Edgar', 1, 0, 0, '', '', 0, 0, 0, ''");
    patient("22, 1, 'Viejo', 1, 0, 0, '', '', 0, 0, -1, ''");
    // Álvarez comes first by name with a living animal; his dead one stands below it.
    const QString all = u"Álvarez/Garra Álvarez/(Gardel) García/Fido García/Mora García/(Viejo) "
                        "Zeta/Edgar"_s;
    EXPECT_EQ(find(u"gar"_s), all);
    EXPECT_EQ(find(u"gar"_s, 2), u"Álvarez/Garra García/Fido");
    EXPECT_EQ(index.Buscar(s, u"gar"_s, 2).total, 6);
}

TEST_F(QuickFind, FollowsTheTables)
{
    EXPECT_EQ(find(u"nuevo"_s), u"");
    s.clientes->Execute("insert into Clientes (idc, ayn) values (50, 'Nuevo')");
    EXPECT_EQ(find(u"nuevo"_s), u"Nuevo/");

    // Another terminal.
    Sesion other(ask, impresion, Idioma::Ingles);
    FijarCarpetaDeDatos(other, carpeta.path());
    ASSERT_FALSE(AbrirAlmacen(other));
    other.clientes->Execute("delete * from clientes where idc = 50");
    EXPECT_EQ(index.Buscar(s, u"nuevo"_s, 9).filas.size(), 0U); // gone before the index knows
    QTest::qWait(250);
    other.clientes->Execute("insert into Clientes (idc, ayn) values (51, 'Lejano')");
    QTest::qWait(250);
    EXPECT_EQ(find(u"lejano"_s), u"Lejano/");
    EXPECT_EQ(find(u"nuevo"_s), u"");
}

// --- The dialogs -----------------------------------------------------------------------------

namespace
{

class SearchForms : public Searches
{
protected:
    SearchForms()
    {
        forms.Registrar(u"frmPropietarios"_s,
                        [this] { return new FormBase(s, u"frmPropietarios"_s); });
    }

    template <typename W>
    static W *child(QWidget &form, const char16_t *name)
    {
        auto *found = form.findChild<W *>(QString::fromUtf16(name));
        EXPECT_TRUE(found) << QString::fromUtf16(name).toStdString();
        return found;
    }
    static QString rows(const Grilla *grid)
    {
        QStringList names;
        for (int i = 0; i < grid->Modelo()->Filas(); ++i)
            names << grid->Modelo()->TextoDeCelda(i, 1);
        return names.join(u' ');
    }
    static bool showsSoon(const Grilla *grid, const QString &names)
    {
        return QTest::qWaitFor([&] { return rows(grid) == names; }, 3000);
    }
    bool registryIsOpen() { return forms.Cargar(u"frmPropietarios"_s)->isVisible(); }

    Formularios forms;
};

} // namespace

TEST_F(SearchForms, AreWalkedByTheKeyboard)
{
    frmBusqueda form(s, forms, Busqueda::Mascotas);
    EXPECT_EQ(form.objectName(), u"frmBusquedaMascotas");
    EXPECT_EQ(form.windowTitle(), u"Patient search");
    form.opened({});
    form.show();
    auto *text = child<QLineEdit>(form, u"txtTextoUno");
    auto *grid = child<Grilla>(form, u"grd");
    EXPECT_FALSE(child<QPushButton>(form, u"cmdContinuar")->isEnabled());

    QTest::keyClicks(text, u"o"_s);
    EXPECT_EQ(rows(grid), u""); // the key itself waits for nothing
    EXPECT_TRUE(showsSoon(grid, u"Fido Mora"_s));
    EXPECT_EQ(grid->Modelo()->TextoDeCelda(0, 8), s(27));
    EXPECT_EQ(grid->Modelo()->TextoDeCelda(0, 9), s(28));
    QTest::keyClicks(child<QLineEdit>(form, u"txtTextoDos"), u"luis"_s);
    EXPECT_TRUE(showsSoon(grid, u""_s));
    child<QLineEdit>(form, u"txtTextoDos")->clear();
    EXPECT_TRUE(showsSoon(grid, u"Fido Mora"_s));

    text->setFocus();
    text->clear();
    QTest::keyClick(text, Qt::Key_Return); // asks for nothing
    EXPECT_EQ(form.focusWidget(), text);
    QTest::keyClicks(text, u"o"_s);

    QTest::keyClick(text, Qt::Key_Down);
    EXPECT_EQ(grid->FilaActual(), 1);
    QTest::keyClick(text, Qt::Key_Return); // the row stays, the keyboard goes to the grid
    EXPECT_EQ(grid->FilaActual(), 1);
    EXPECT_EQ(form.focusWidget(), grid);
    QTest::keyClick(grid, Qt::Key_Return);
    EXPECT_FALSE(form.isVisible());
    EXPECT_TRUE(registryIsOpen());
    EXPECT_EQ(s.IdGlobal.idm, 11);

    form.opened({});
    EXPECT_EQ(rows(grid), u"");
    EXPECT_EQ(text->text(), u"");
}

TEST_F(SearchForms, WhatCannotBeAskedLeavesTheRows)
{
    frmBusqueda form(s, forms, Busqueda::Clientes);
    form.opened({});
    form.show();
    auto *text = child<QLineEdit>(form, u"txtTextoUno");
    auto *grid = child<Grilla>(form, u"grd");
    auto *help = child<LineaDeAyuda>(form, u"Ayu");
    QTest::keyClicks(text, u"ana"_s);
    QTest::keyClick(text, Qt::Key_Return);
    EXPECT_EQ(rows(grid), u"García Ana");

    ask.Espera(u"(')"_s);
    QTest::keyClick(text, '\'');
    EXPECT_EQ(text->text(), u"ana");

    // Typed, the failing region is told in a line; asked for with ENTER, in a box.
    auto *criterion = child<QComboBox>(form, u"cmbCriterioUno");
    criterion->setCurrentIndex(criterion->findText(u"Region"_s));
    EXPECT_TRUE(QTest::qWaitFor([&] { return help->text().contains(u"Nombre"_s); }, 3000));
    EXPECT_EQ(rows(grid), u"García Ana");
    ask.Espera(u"Nombre"_s);
    QTest::keyClick(text, Qt::Key_Return);
    EXPECT_EQ(rows(grid), u"García Ana");

    frmBusqueda patients(s, forms, Busqueda::Mascotas);
    patients.opened({});
    patients.show();
    text = child<QLineEdit>(patients, u"txtTextoUno");
    grid = child<Grilla>(patients, u"grd");
    help = child<LineaDeAyuda>(patients, u"Ayu");
    criterion = child<QComboBox>(patients, u"cmbCriterioUno");
    criterion->setCurrentIndex(criterion->findText(u"Death"_s));
    QTest::keyClicks(text, u"1"_s);
    EXPECT_TRUE(showsSoon(grid, u"Gardel"_s));
    QTest::keyClicks(text, u"3"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return help->text() == s(2402); }, 3000));
    ask.Espera(s(2402));
    QTest::keyClick(text, Qt::Key_Return);
    EXPECT_EQ(rows(grid), u"Gardel");
}

TEST_F(SearchForms, TheButtonTakesTheRowAndTellsOfOneThatIsGone)
{
    frmBusqueda form(s, forms, Busqueda::Clientes);
    form.opened({});
    form.show();
    QTest::keyClicks(child<QLineEdit>(form, u"txtTextoUno"), u"luis"_s);
    QTest::keyClick(child<QLineEdit>(form, u"txtTextoUno"), Qt::Key_Return);
    s.clientes->Execute("update clientes set idc = 7 where idc = 2");
    auto *go = child<QPushButton>(form, u"cmdContinuar");
    go->click();
    EXPECT_TRUE(form.isVisible());
    EXPECT_EQ(child<LineaDeAyuda>(form, u"Ayu")->text(), s(9829));
    s.clientes->Execute("update clientes set idc = 2 where idc = 7");
    go->click();
    EXPECT_FALSE(form.isVisible());
    EXPECT_EQ(s.IdGlobal.idc, 2);
    EXPECT_EQ(s.IdGlobal.idm, 12);
}

TEST_F(SearchForms, TheQuickFindAnswersEveryKey)
{
    frmBusquedaRapida form(s, forms);
    form.opened({});
    form.show();
    auto *text = child<QLineEdit>(form, u"txtBuscar");
    auto *grid = child<Grilla>(form, u"grd");
    QTest::keyClick(text, Qt::Key_Return); // nothing to go to yet
    EXPECT_TRUE(form.isVisible());

    QTest::keyClicks(text, u"gar"_s);
    EXPECT_EQ(rows(grid), u"Fido Mora Gardel (deceased)");
    EXPECT_EQ(grid->Modelo()->TextoDeCelda(0, 0), u"García Ana");
    EXPECT_EQ(grid->Modelo()->TextoDeCelda(1, 0), u""); // the same owner
    EXPECT_EQ(grid->Modelo()->Fila(2).realce, Realce::Apagado);
    QTest::keyClick(text, Qt::Key_Down);
    QTest::keyClick(text, Qt::Key_Return);
    EXPECT_FALSE(form.isVisible());
    EXPECT_TRUE(registryIsOpen());
    EXPECT_EQ(s.IdGlobal.idm, 11);

    form.opened({});
    EXPECT_EQ(rows(grid), u"");
    QTest::keyClicks(text, u"zeta"_s);
    QTest::keyClick(text, Qt::Key_Return);
    EXPECT_EQ(s.IdGlobal.idc, 3);
    EXPECT_EQ(s.IdGlobal.idm, 0);
}
