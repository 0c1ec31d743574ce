#include "clients/frmbusqueda.h"
#include "clients/frmbusquedarapida.h"
#include "clients/quick_search.h"
#include "clients/search.h"
#include "support/clinic.h"
#include "texts/search.h"
#include "texts/texts.h"
#include "ui/form_registry.h"
#include "ui/grid.h"
#include "ui/help_line.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <set>

using namespace clients;
using namespace Qt::StringLiterals;

namespace
{

class Searches : public Clinic
{
protected:
    Searches()
    {
        add("CLLocalidad (id, nom) values (1, 'Centro')");
        add("CLLocalidad (id, nom) values (2, 'Cerro')");
        add("CLDepartamento (id, nom) values (1, 'Sur')");
        add("CLMarketing (id, nom) values (1, 'Radio')");
        add("MLRazas (id, nom) values (1, 'Caniche')");
        add("MLPelajes (id, nom) values (1, 'Atigrado')");
        add("Clientes (idc, ayn, dir, loc, dep, codp2, codt2, tel2, telc2, email, mark, obs) "
            "values "
            "(1, 'García Ana', 'Rivera 20', 1, 1, '11300', '02', '4812-345, 4900', '099 123-456', "
            "'ana@correo.example', 1, 'paga tarde')");
        add("Clientes (idc, ayn, dir, loc, tel2) values (2, 'Álvarez Luis', 'Colón 7', 2, '4777')");
        add("Clientes (idc, ayn, dir) values (3, 'Zeta 50% [x] * # ?', 'Otra')");
        patient("10, 1, 'Fido', 1, 1, 1, 'mancha', '981000077', -1, 0, 0, 'muerde'");
        patient("11, 1, 'Mora', 2, 0, 0, '', '', 0, -1, 0, ''");
        patient("12, 2, 'Gardel', 1, 0, 0, '', '', 0, 0, -1, ''");
        patient("13, 99, 'Edgar', 1, 0, 0, '', '', 0, 0, 0, ''"); // no owner
    }

    void add(const std::string &row) { s.clientes->Execute("insert into " + row); }
    void patient(const std::string &values)
    {
        add("Mascotas (idm, idc, nom, esp, raz, pel, car, Chip, ped, rep, dec, obs) values ("
            + values + ")");
    }

    Condition by(Search what, const QString &criterion, const QString &text) const
    {
        const auto all = criteriaOf(what);
        for (size_t i = 0; i < all.size(); ++i)
            if (s(all[i].name) == criterion)
                return {int(i), text};
        ADD_FAILURE() << criterion.toStdString();
        return {};
    }

    static QString ids(const Finding &found)
    {
        QStringList all;
        for (const QList<store::Value> &cells : found.rows)
            all << cells.front().toText();
        return all.join(u' ');
    }
    /// The ids found, which must be the same while typing.
    QString search(Search what, const Conditions &asked)
    {
        const QString all = ids(find(s, what, asked));
        EXPECT_EQ(ids(findWhileTyping(s, what, asked)), all);
        return all;
    }
    QString clientsNamed(const QString &text)
    {
        return search(Search::Clientes, {by(Search::Clientes, u"Name"_s, text), {}});
    }
};

} // namespace

TEST_F(Searches, EachCriterionFindsItsRows)
{
    // Criterion, text and the ids found.
    const auto each = [this](Search what, const QStringList &cases) {
        for (const QString &c : cases) {
            const QStringList parts = c.split(u'|');
            EXPECT_EQ(search(what, {by(what, parts[0], parts[1]), {}}), parts[2])
                << c.toStdString();
        }
    };
    each(Search::Patients,
         {u"Name|GAR|13 12"_s, u"Name|x|"_s, u"Breed|nich|10"_s, u"Especies|fel|11"_s,
          u"Fur|tigr|10"_s, u"Features|man|10"_s, u"Chip|0077|10"_s, u"Owner|lu|12"_s,
          u"Owner|á|12"_s, u"Address|riv|10 11"_s, u"Sub region|ce|10 12 11"_s,
          u"Phone|2-3|10 11"_s, u"Mobile phone|9912|"_s, u"Mobile phone|099 1|10 11"_s,
          u"Notes|muer|10"_s, u"Pedigree|1|10"_s, u"Breeder|1|11"_s, u"Death|2|13 10 11"_s});
    each(Search::Clientes,
         {u"Name|a|2 1 3"_s, u"Address|COLÓN|2"_s, u"Sub region|cer|2"_s, u"Post code|113|1"_s,
          u"Area code|2|1"_s, u"Phone|4|2 1"_s, u"Mobile phone|456|1"_s, u"Email|@correo|1"_s,
          u"Marketing|rad|1"_s, u"Notes|tarde|1"_s});
}

TEST_F(Searches, CellsStandUnderTheirTitles)
{
    const auto row = [this](Search what, const QString &name) {
        const Finding found = find(s, what, {Condition{0, name}, {}});
        QStringList cells;
        for (const store::Value &v : found.rows.at(0))
            cells << v.toText();
        EXPECT_EQ(cells.size(), qsizetype(titlesOf(what).size()));
        return cells.join(u'|');
    };
    EXPECT_EQ(row(Search::Patients, u"fido"_s),
              u"10|Fido|García Ana|Caniche|Canino|Atigrado|mancha|981000077|-1|0|0|Rivera 20|"
              "Centro|4812-345, 4900|099 123-456|muerde"_s);
    EXPECT_EQ(row(Search::Clientes, u"ana"_s),
              u"1|García Ana|Rivera 20|Centro|Sur|11300|02|4812-345, 4900|099 123-456|"
              "ana@correo.example|Radio|paga tarde"_s);
}

TEST_F(Searches, BothConditionsMustHold)
{
    const auto both = [this](const QString &owner, const QString &criterion, const QString &text) {
        return search(Search::Patients, {by(Search::Patients, u"Owner"_s, owner),
                                         by(Search::Patients, criterion, text)});
    };
    EXPECT_EQ(both(u"ana"_s, u"Name"_s, u"mor"_s), u"11");
    EXPECT_EQ(both(u"ana"_s, u"Name"_s, u"gar"_s), u"");
    EXPECT_EQ(both(u"ana"_s, u"Sub region"_s, u"cen"_s), u"10 11");
    EXPECT_EQ(both(u""_s, u"Breed"_s, u"can"_s), u"10");
    EXPECT_FALSE(find(s, Search::Patients, {}).sought);
}

TEST_F(Searches, AStarStandsForAnythingAndOtherSignsForThemselves)
{
    EXPECT_EQ(clientsNamed(u"gar*ana"_s), u"1");
    EXPECT_EQ(clientsNamed(u"*"_s), u"2 1 3");
    for (const QString &text : {u"#"_s, u"?"_s, u"[x]"_s, u"50%"_s, u"[x] *"_s, u"z*# ?"_s})
        EXPECT_EQ(clientsNamed(text), u"3") << text.toStdString();
    EXPECT_EQ(clientsNamed(u"[a-z]"_s), u"");
    EXPECT_EQ(clientsNamed(u"a_a"_s), u"");
}

TEST_F(Searches, TypingBringsSomeRowsAndEnterAll)
{
    for (int i = 0; i < RowsWhileTyping + 5; ++i)
        s.clientes->Execute("insert into Clientes (idc, ayn) values (?, ?)", 1000 + i,
                            u"Muchos %1"_s.arg(RowsWhileTyping - i, 4, 10, QChar(u'0')));
    const Conditions asked{Condition{0, u"much"_s}, Condition{}};
    const Finding typed = findWhileTyping(s, Search::Clientes, asked);
    const Finding all = find(s, Search::Clientes, asked);
    EXPECT_TRUE(typed.more);
    EXPECT_EQ(typed.rows.size(), size_t(RowsWhileTyping));
    EXPECT_FALSE(all.more);
    EXPECT_EQ(all.rows.size(), size_t(RowsWhileTyping) + 5);
    // Exactly as many as the limit.
    s.clientes->Execute("delete * from Clientes where idc > ?", 1000 + RowsWhileTyping - 1);
    const Finding exact = findWhileTyping(s, Search::Clientes, asked);
    EXPECT_FALSE(exact.more);
    EXPECT_EQ(exact.rows.size(), size_t(RowsWhileTyping));
    for (const Finding *h : {&typed, &all})
        EXPECT_TRUE(std::ranges::is_sorted(
            h->rows, {}, [](const QList<store::Value> &cells) { return cells[1].toText(); }));
}

TEST_F(Searches, WhatCannotBeAskedSaysWhy)
{
    for (const QString &text : {u"3"_s, u"yes"_s, u"12"_s})
        for (const QString &flag : {u"Pedigree"_s, u"Breeder"_s, u"Death"_s}) {
            const Conditions asked{by(Search::Patients, flag, text), Condition{}};
            EXPECT_EQ(findWhileTyping(s, Search::Patients, asked).impediment,
                      s(text::YesNoCriterionAlone));
        }
    // On purpose: the criterion names a column that does not exist.
    const Conditions region{by(Search::Clientes, u"Region"_s, u"sur"_s), Condition{}};
    EXPECT_TRUE(findWhileTyping(s, Search::Clientes, region).impediment.contains(u"Nombre"_s));
    EXPECT_THROW(find(s, Search::Clientes, region), store::StoreError);
}

TEST_F(Searches, TakingAFindMovesTheSelection)
{
    const auto now = [this] { return u"%1 %2"_s.arg(s.IdGlobal.idc).arg(s.IdGlobal.idm); };
    EXPECT_TRUE(takeFound(s, Search::Patients, 11));
    EXPECT_EQ(now(), u"1 11");
    EXPECT_TRUE(takeFound(s, Search::Clientes, 1)); // its patient stays
    EXPECT_EQ(now(), u"1 11");
    EXPECT_TRUE(takeFound(s, Search::Clientes, 2));
    EXPECT_EQ(now(), u"2 12");
    EXPECT_TRUE(takeFound(s, Search::Clientes, 3));
    EXPECT_EQ(now(), u"3 0");
    EXPECT_FALSE(takeFound(s, Search::Patients, 500));
    EXPECT_FALSE(takeFound(s, Search::Clientes, 500));
    EXPECT_EQ(now(), u"3 0");
}

TEST(SearchNames, AreToldApartInEveryLanguage)
{
    for (const store::Language language :
         {store::Language::Spanish, store::Language::Portuguese, store::Language::English}) {
        const store::Texts texts(language);
        for (const Search what : {Search::Patients, Search::Clientes}) {
            std::set<QString> names;
            for (const SearchCriterion &c : criteriaOf(what))
                names.insert(texts(c.name));
            EXPECT_EQ(names.size(), criteriaOf(what).size());
        }
    }
}

// --- Quick find ------------------------------------------------------------------------------

namespace
{

class QuickFind : public Searches
{
protected:
    QuickIndex index;

    /// "owner/animal" of each match, dead animals in brackets.
    QString find(const QString &text, int count = 50)
    {
        index.bringUpToDate(s);
        QStringList all;
        for (const FoundQuick &h : index.find(s, text, count).rows) {
            const QString animal = h.dec ? u'(' + h.patient + u')' : h.patient;
            all << h.owner.section(u' ', 0, 0) + u'/' + animal;
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
        {u"fido luis"_s, u""_s},
        {u"9912"_s, u"García/Fido García/Mora"_s},
        {u"099 123-456"_s, u"García/Fido García/Mora"_s},
        {u"4900"_s, u"García/Fido García/Mora"_s},
        {u"3454900"_s, u""_s},                        // one number after the other, not one number
        {u"00077 gar"_s, u"García/Fido"_s},           // the chip
        {u"3"_s, u"Zeta/ García/Fido García/Mora"_s}, // the id before parts of telephones
        {u"0012"_s, u"Álvarez/(Gardel)"_s},
        {u"*"_s, u"Zeta/"_s}, // an owner without animals
        {u"edgar"_s, u""_s},  // no owner to open
        {u"- "_s, u""_s},
    };
    for (const auto &[text, expected] : cases)
        EXPECT_EQ(find(text), expected) << text.toStdString();
}

TEST_F(QuickFind, TheBestStandsFirstAndOwnersTogether)
{
    patient("20, 2, 'Garra', 1, 0, 0, '', '', 0, 0, 0, ''");
    patient("21, 3, 'Edgar', 1, 0, 0, '', '', 0, 0, 0, ''");
    patient("22, 1, 'Viejo', 1, 0, 0, '', '', 0, 0, -1, ''");
    // Álvarez is the first by name with a living animal; his dead one follows below it.
    const QString all = u"Álvarez/Garra Álvarez/(Gardel) García/Fido García/Mora García/(Viejo) "
                        "Zeta/Edgar"_s;
    EXPECT_EQ(find(u"gar"_s), all);
    EXPECT_EQ(find(u"gar"_s, 2), u"Álvarez/Garra García/Fido");
    EXPECT_EQ(index.find(s, u"gar"_s, 2).total, 6);
}

TEST_F(QuickFind, FollowsTheTables)
{
    EXPECT_EQ(find(u"nuevo"_s), u"");
    s.clientes->Execute("insert into Clientes (idc, ayn) values (50, 'Nuevo')");
    EXPECT_EQ(find(u"nuevo"_s), u"Nuevo/");

    // Written by another terminal.
    Sesion other(ask, impresion, store::Language::English);
    store::setDataFolder(other, folder.path());
    ASSERT_FALSE(store::openStore(other));
    other.clientes->Execute("delete * from clientes where idc = 50");
    EXPECT_EQ(index.find(s, u"nuevo"_s, 9).rows.size(), 0U); // deleted before the index is updated
    EXPECT_TRUE(eventually([&] { return find(u"nuevo"_s) == u""; }));
    other.clientes->Execute("insert into Clientes (idc, ayn) values (51, 'Lejano')");
    EXPECT_TRUE(eventually([&] { return find(u"lejano"_s) == u"Lejano/"; }));
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
        forms.enrol(u"frmPropietarios"_s,
                    [this] { return new ui::FormBase(s, u"frmPropietarios"_s); });
    }

    template <typename W>
    static W *child(QWidget &form, const char16_t *name)
    {
        auto *found = form.findChild<W *>(QString::fromUtf16(name));
        EXPECT_TRUE(found) << QString::fromUtf16(name).toStdString();
        return found;
    }
    QString rows() const
    {
        QStringList names;
        for (int i = 0; i < grid->gridModel()->allRows(); ++i)
            names << grid->gridModel()->cellText(i, 1);
        return names.join(u' ');
    }
    bool showsSoon(const QString &names) const
    {
        return QTest::qWaitFor([&] { return rows() == names; }, 3000);
    }
    bool registryIsOpen() { return forms.load(u"frmPropietarios"_s)->isVisible(); }
    /// Opens a form and finds the box to type into.
    void open(ui::FormBase &form, const char16_t *box = u"txtTextoUno")
    {
        form.opened({});
        form.show();
        text = child<QLineEdit>(form, box);
        grid = child<ui::Grid>(form, u"grd");
    }
    void type(const QString &what) { QTest::keyClicks(text, what); }
    void key(Qt::Key k) { QTest::keyClick(text, k); }
    void searchBy(ui::FormBase &form, const QString &criterion)
    {
        auto *list = child<QComboBox>(form, u"cmbCriterioUno");
        list->setCurrentIndex(list->findText(criterion));
    }
    QString hint(ui::FormBase &form) { return child<ui::HelpLine>(form, u"Ayu")->text(); }

    ui::FormRegistry forms;
    QLineEdit *text = nullptr;
    ui::Grid *grid = nullptr;
};

} // namespace

TEST_F(SearchForms, AreWalkedByTheKeyboard)
{
    frmBusqueda form(s, forms, Search::Patients);
    EXPECT_EQ(form.objectName(), u"frmBusquedaMascotas");
    EXPECT_EQ(form.windowTitle(), u"Patient search");
    open(form);
    EXPECT_FALSE(child<QPushButton>(form, u"cmdContinuar")->isEnabled());
    key(Qt::Key_Return); // nothing to search for
    EXPECT_EQ(form.focusWidget(), text);

    type(u"o"_s);
    EXPECT_EQ(rows(), u""); // the key itself does not wait for the search
    EXPECT_TRUE(showsSoon(u"Fido Mora"_s));
    EXPECT_EQ(grid->gridModel()->cellText(0, 8), s(text::Yes));
    EXPECT_EQ(grid->gridModel()->cellText(0, 9), s(text::No));
    auto *second = child<QLineEdit>(form, u"txtTextoDos");
    QTest::keyClicks(second, u"luis"_s);
    EXPECT_TRUE(showsSoon(u""_s));
    second->clear();
    EXPECT_TRUE(showsSoon(u"Fido Mora"_s));

    text->setFocus();
    key(Qt::Key_Down);
    EXPECT_EQ(grid->currentRow(), 1);
    key(Qt::Key_Return); // the row stays current, the focus moves to the grid
    EXPECT_EQ(grid->currentRow(), 1);
    EXPECT_EQ(form.focusWidget(), grid);
    QTest::keyClick(grid, Qt::Key_Return);
    EXPECT_FALSE(form.isVisible());
    EXPECT_TRUE(registryIsOpen());
    EXPECT_EQ(s.IdGlobal.idm, 11);

    form.opened({});
    EXPECT_EQ(rows() + text->text(), u"");
}

TEST_F(SearchForms, WhatCannotBeAskedLeavesTheRows)
{
    frmBusqueda clients(s, forms, Search::Clientes);
    open(clients);
    type(u"ana"_s);
    key(Qt::Key_Return);
    EXPECT_EQ(rows(), u"García Ana");
    QTest::keyClick(text, '\'');
    EXPECT_EQ(text->text(), u"ana");
    EXPECT_TRUE(hint(clients).contains(u"(')"_s)) << hint(clients).toStdString();

    // The failing region is reported in a line while typing, and in a message after ENTER.
    searchBy(clients, u"Region"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return hint(clients).contains(u"Nombre"_s); }, 3000));
    EXPECT_EQ(rows(), u"García Ana");
    ask.wait(u"Nombre"_s);
    key(Qt::Key_Return);
    EXPECT_EQ(rows(), u"García Ana");

    frmBusqueda patients(s, forms, Search::Patients);
    open(patients);
    searchBy(patients, u"Death"_s);
    type(u"1"_s);
    EXPECT_TRUE(showsSoon(u"Gardel"_s));
    type(u"3"_s);
    EXPECT_TRUE(
        QTest::qWaitFor([&] { return hint(patients) == s(text::YesNoCriterionAlone); }, 3000));
    ask.wait(s(text::YesNoCriterionAlone));
    key(Qt::Key_Return);
    EXPECT_EQ(rows(), u"Gardel");
}

TEST_F(SearchForms, TheButtonTakesTheRowAndTellsOfOneThatIsGone)
{
    frmBusqueda form(s, forms, Search::Clientes);
    open(form);
    type(u"luis"_s);
    key(Qt::Key_Return);
    s.clientes->Execute("update clientes set idc = 7 where idc = 2");
    auto *go = child<QPushButton>(form, u"cmdContinuar");
    go->click();
    EXPECT_TRUE(form.isVisible());
    EXPECT_EQ(hint(form), s(text::SearchRowIsGone));
    s.clientes->Execute("update clientes set idc = 2 where idc = 7");
    go->click();
    EXPECT_FALSE(form.isVisible());
    EXPECT_EQ(s.IdGlobal.idc, 2);
}

TEST_F(SearchForms, TheQuickFindAnswersEveryKey)
{
    frmBusquedaRapida form(s, forms);
    open(form, u"txtBuscar");
    key(Qt::Key_Return); // no match to open yet
    EXPECT_TRUE(form.isVisible());

    type(u"gar"_s);
    EXPECT_EQ(rows(), u"Fido Mora Gardel (deceased)");
    EXPECT_EQ(grid->gridModel()->cellText(0, 0), u"García Ana");
    EXPECT_EQ(grid->gridModel()->cellText(1, 0), u""); // the same owner
    EXPECT_EQ(grid->gridModel()->Row(2).highlight, ui::Highlight::Off);
    key(Qt::Key_Down);
    key(Qt::Key_Return);
    EXPECT_FALSE(form.isVisible());
    EXPECT_TRUE(registryIsOpen());
    EXPECT_EQ(s.IdGlobal.idm, 11);

    form.opened({});
    EXPECT_EQ(rows(), u"");
    type(u"zeta"_s);
    key(Qt::Key_Return);
    EXPECT_EQ(s.IdGlobal.idc, 3);
    EXPECT_EQ(s.IdGlobal.idm, 0);
}
