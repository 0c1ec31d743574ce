#include "messages/templates.h"
#include "settings_form.h"
#include "store/settings_row.h"
#include "texts/admin.h"
#include "texts/texts.h"
#include "ui/bound.h"
#include "ui/grid.h"

#include <QCheckBox>
#include <QComboBox>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>

using namespace Qt::StringLiterals;

namespace
{

/// The pages for what the program does by itself.
class AutomaticPages : public SettingsForm
{
protected:
    void choose(const QString &group, int option)
    {
        pressIn(the<ui::OptionsGroup>(group)->findChild<QRadioButton *>(u"opt%1"_s.arg(option)),
                Qt::Key_Space);
    }
    void toggle(const QString &box) { pressIn(the<QCheckBox>(box), Qt::Key_Space); }
    int chosen(const QString &group) { return the<ui::OptionsGroup>(group)->Value(); }
};

class TemplatePage : public AutomaticPages
{
protected:
    TemplatePage()
    {
        s.clientes->Execute("insert into clientes (idc, ayn) values (7, 'Ana Paz')");
        s.clientes->Execute("insert into mascotas (idm, idc, nom) values (9, 7, 'Toby')");
        store::saveSetting(s, "mensajeriacumplemail", u"Happy <nommas>!"_s);
    }
    void openAtBirthdays()
    {
        open(u"mensajes"_s);
        for (int i = 0; i < 4; ++i)
            pressIn(list(), Qt::Key_Down);
        ASSERT_EQ(message()->toPlainText(), u"Happy <nommas>!"_s);
    }
    QComboBox *list() { return the<QComboBox>(u"cmbAMensaje"_s); }
    QPlainTextEdit *message() { return the<QPlainTextEdit>(u"RTxtMen"_s); }
    QString preview() { return the<QPlainTextEdit>(u"txtVista"_s)->toPlainText(); }
    void write(const QString &more)
    {
        message()->setFocus();
        message()->moveCursor(QTextCursor::End);
        QTest::keyClicks(message(), more);
    }
};

} // namespace

TEST_F(AutomaticPages, EachChoiceIsWrittenAtOnce)
{
    open(u"automatizacion"_s);
    const std::string_view columns =
        "AutNuevoCliente, AutFrecuente, AutMedicinaPrepaga, AutRecordatorioCitasOlvida, "
        "AutDeudaNoVenderSupervisor, AutDeudaNoVenderComun, AutVentaPlanificadas, "
        "AutVentaConsumo, AutVentaConsulta, AutDosisPlanificada";
    const QStringList names = QString::fromLatin1(columns.data()).split(u", "_s);
    EXPECT_EQ(stored(columns), u"2|2|1|1|1|1|1|1|1|3"_s);
    for (const QString &name : names) {
        const auto options = the<ui::OptionsGroup>(name)->findChildren<QRadioButton *>();
        choose(name, options.size() == 3 || name == u"AutNuevoCliente" ? 1 : 2);
        EXPECT_FALSE(hint().startsWith(u'#')) << name.toStdString();
    }
    EXPECT_EQ(stored(columns), u"1|2|2|2|2|1|1|2|1|1"_s);
    choose(u"AutVentaConsulta"_s, 3);
    press(Qt::Key_Up);
    EXPECT_EQ(stored("AutVentaConsulta"), u"2"_s) << "the arrows choose as well";
}

TEST_F(AutomaticPages, MeasuresShowOlderRowsAndStoreWhatTheDailyRunReads)
{
    s.morvane->Execute("update configuracion set MedidasRevac = 0, MedidasCumple = null, "
                       "MedidasDeudores = 3, MedidasRevacDescont = -1, alimentomail = -1");
    open(u"medidas"_s);
    EXPECT_EQ(chosen(u"MedidasRevac"_s), 4) << "never chosen is off";
    EXPECT_EQ(chosen(u"MedidasCumple"_s), 4);
    EXPECT_EQ(chosen(u"MedidasDeudores"_s), 1);
    EXPECT_EQ(chosen(u"alimentomail"_s), 1);
    EXPECT_TRUE(the<QCheckBox>(u"MedidasRevacDescont"_s)->isChecked());
    const std::string_view columns =
        "MedidasRevac, MedidasCumple, MedidasDeudores, MedidasRevacDescont, alimentomail, "
        "tiempovencimiento, diasdeudores";
    toggle(u"MedidasRevacDescont"_s);
    choose(u"MedidasRevac"_s, 3);
    choose(u"MedidasCumple"_s, 2);
    choose(u"MedidasDeudores"_s, 2);
    choose(u"alimentomail"_s, 2);
    type(u"tiempovencimiento"_s, u"7d"_s);
    type(u"diasdeudores"_s, u"30"_s);
    EXPECT_EQ(stored(columns), u"3|2|0|0|0|7|30"_s);
    toggle(u"MedidasRevacDescont"_s);
    choose(u"MedidasRevac"_s, 4);
    choose(u"MedidasDeudores"_s, 1);
    choose(u"alimentomail"_s, 1);
    type(u"diasdeudores"_s, u""_s);
    EXPECT_EQ(stored(columns), u"4|2|1|1|-1|7|"_s);
}

TEST_F(AutomaticPages, ProfilesTakePercentagesUpTo100AndMarkCategories)
{
    s.finanzas->Execute("update flcategorias set CatPerfil = 0");
    open(u"perfiles"_s);
    type(u"PorcentajeBuenosCompradores"_s, u"150"_s);
    EXPECT_EQ(form->focusWidget(), the<QLineEdit>(u"totalbuenoscompradores"_s)) << "ENTER walks";
    type(u"PorcentajeDemoraDeudas"_s, u"100"_s);
    type(u"TiempoFrecuente"_s, u"45"_s);
    type(u"totalbuenoscompradores"_s, QString(20, u'9'));
    EXPECT_EQ(stored("totalbuenoscompradores"), QString(12, u'9'));
    type(u"totalbuenoscompradores"_s, u"99.50"_s);
    EXPECT_EQ(stored("PorcentajeBuenosCompradores, PorcentajeDemoraDeudas, TiempoFrecuente, "
                     "totalbuenoscompradores, LeerPerfil"),
              u"15|100|45|99.5|-1"_s);
    toggle(u"LeerPerfil"_s);
    EXPECT_EQ(stored("LeerPerfil"), u"0"_s);
    const auto marked = [this] {
        return allRows(*s.finanzas, "select idcat from flcategorias where CatPerfil");
    };
    toggle(u"CatPerfil4"_s);
    EXPECT_EQ(marked(), u"4\n"_s);
    toggle(u"CatPerfil4"_s);
    EXPECT_EQ(marked(), QString());
}

TEST_F(AutomaticPages, FoodHasThreeLevelsForDogsAndOneForOthers)
{
    s.morvane->Execute("update configuracion set detali1 = null, detali2 = 400, detali3 = null, "
                       "KgLbs = 2");
    s.clientes->Execute("update mlespecies set ali = 0.75 where id = 2");
    open(u"alimento"_s);
    for (const QLabel *unit : the<QLineEdit>(u"txtdetali"_s)->parent()->findChildren<QLabel *>())
        EXPECT_EQ(unit->text(), u"g"_s) << "stocks count grams where the clinic weighs in pounds";
    auto *species = the<QComboBox>(u"cmbAliEsp"_s);
    const auto boxes = [this] {
        QStringList shown;
        for (const QString &name : {u"txtdetali"_s, u"txtdetali2"_s, u"txtdetali3"_s})
            if (the<QLineEdit>(name)->isVisible())
                shown << the<QLineEdit>(name)->accessibleName() + u'=' + text(name);
        return shown.join(u", "_s);
    };
    const auto pick = [&](int id) {
        pressIn(species, Qt::Key_Home);
        while (species->currentData() != id && species->currentIndex() + 1 < species->count())
            press(Qt::Key_Down);
    };
    pick(1);
    EXPECT_EQ(boxes(),
              u"%1=, %2=400, %3="_s.arg(s(text::SmallDog), s(text::MediumDog), s(text::LargeDog)));
    type(u"txtdetali3"_s, u"900.5"_s);
    pick(2);
    EXPECT_EQ(boxes(), s(text::FoodQuantity) + u"=0.75"_s);
    type(u"txtdetali"_s, u"1.25"_s);
    pick(3);
    EXPECT_EQ(boxes(), s(text::FoodQuantity) + u'=');
    type(u"txtdetali"_s, u"8"_s);
    type(u"txtdetali"_s, u""_s);
    pick(1);
    fill(u"txtdetali2"_s, u"4005"_s);
    close(); // half-finished typing counts
    EXPECT_EQ(stored("detali1, detali2, detali3"), u"|4005|900.5"_s);
    EXPECT_EQ(allRows(*s.clientes, "select id, ali from mlespecies order by id"),
              u"1|\n2|1.25\n3|\n"_s);
}

TEST_F(TemplatePage, WhatIsWrittenIsPreviewedAndStoredOnLeaving)
{
    openAtBirthdays();
    EXPECT_EQ(preview(), u"Happy Toby!"_s);
    write(u" It's \"<RazVet>\", <NomCli>"_s);
    EXPECT_EQ(preview(), u"Happy Toby! It's \"\", Ana Paz"_s);
    EXPECT_EQ(stored("mensajeriacumplemail"), u"Happy <nommas>!"_s);
    press(Qt::Key_Tab);
    EXPECT_EQ(stored("mensajeriacumplemail"), u"Happy <nommas>! It's \"<RazVet>\", <NomCli>"_s);
    the<QPushButton>(u"cmdTag"_s)->menu()->actions().value(2)->trigger();
    EXPECT_EQ(form->focusWidget(), message()) << "one goes on typing";
    EXPECT_TRUE(preview().endsWith(u"Ana PazToby"));
    close();
    EXPECT_TRUE(stored("mensajeriacumplemail").endsWith(u"<NomCli><NomMas>"));
}

TEST_F(TemplatePage, EachEntryHasItsTextAndTheSentOneForFeaturedStays)
{
    s.morvane->Execute("update configuracion set MensajeriaSoloADestacados = 'as sent', "
                       "MensajeriaCumpleMailDestacados = 'Dear client,'");
    openAtBirthdays();
    pressIn(list(), Qt::Key_Down);
    write(u" edited"_s);
    pressIn(list(), Qt::Key_Up);
    EXPECT_EQ(message()->toPlainText(), u"Happy <nommas>!"_s);
    EXPECT_EQ(stored("MensajeriaCumpleMailDestacados"), u"Dear client, edited"_s);
    EXPECT_EQ(ComponerMensaje(s, -51, 7, 9, 0, 1), u"as sent"_s) << "intended";
    EXPECT_EQ(list()->count(), 13);
}

TEST_F(TemplatePage, ATextThatCannotBeStoredIsNotLost)
{
    openAtBirthdays();
    s.morvane->Execute("alter table configuracion drop column mensajeriacumplemail");
    write(u" Long work"_s);
    for (int i = 0; i < 2; ++i) // on leaving the text, and on choosing another entry
        ask.wait(s(text::ErrorWasLogged));
    pressIn(list(), Qt::Key_Down);
    EXPECT_EQ(list()->currentIndex(), 4) << "it stays on its entry";
    EXPECT_TRUE(message()->toPlainText().endsWith(u"Long work"));
    message()->document()->setModified(false);
}

TEST_F(TemplatePage, ThePreviewTakesAnyClientOrSaysThatThereIsNone)
{
    s.clientes->Execute("insert into clientes (idc, ayn) values (8, 'Paula [2]')");
    s.clientes->Execute("insert into clientes (idc, ayn) values (9, 'Paula Sol')");
    s.clientes->Execute("insert into mascotas (idm, idc, nom) values (11, 9, 'Luna')");
    s.IdGlobal = {9, 11};
    openAtBirthdays();
    EXPECT_EQ(preview(), u"Happy Luna!"_s) << "the session's patient";
    const auto previewOf = [this](
                               const QString &name, const std::function<void()> &asked = [] {}) {
        ask.expectText(s(text::AskClientName), name);
        asked();
        pressIn(the<QPushButton>(u"cmdOtro"_s), Qt::Key_Space);
        return preview();
    };
    EXPECT_EQ(previewOf(u"ana"_s), u"Happy Toby!"_s);
    EXPECT_EQ(previewOf(u"Paula ["_s), u"Happy !"_s);
    const auto choice = [this] { ask.expectSelection(s(text::Client), QList<int>{1}); };
    EXPECT_EQ(previewOf(u"pau"_s, choice), u"Happy Luna!"_s);
    EXPECT_EQ(previewOf(u"zz"_s, [this] { ask.wait(s(text::NoSuchClient)); }), u"Happy Luna!"_s);
    close();

    s.clientes->Execute("delete * from clientes");
    open(u"mensajes"_s);
    EXPECT_EQ(preview(), QString());
    EXPECT_EQ(the<QPlainTextEdit>(u"txtVista"_s)->placeholderText(), s(text::NoClientsForPreview));
    EXPECT_FALSE(the<QPushButton>(u"cmdOtro"_s)->isEnabled());
}

TEST_F(AutomaticPages, ListsAreWorkedByKeys)
{
    open(u"listas"_s);
    auto *tabs = the<QTabWidget>(u"tabListas"_s);
    EXPECT_EQ(tabs->count(), 6);
    auto *regions = the<ui::Grid>(u"grdDepartamento"_s);
    const auto answer = [this](std::initializer_list<std::pair<int, QString>> answers) {
        for (const auto &[prompt, what] : answers)
            ask.expectText(s(prompt), what);
    };
    pressIn(regions, Qt::Key_Delete); // regions cannot be deleted
    answer({{9638, u"Norte"_s}, {9644, u"011"_s}});
    press(Qt::Key_Insert);
    answer({{9638, u"Centro"_s}, {9644, u"0341"_s}});
    press(Qt::Key_Insert);
    EXPECT_EQ(regions->currentRow(), 0) << "the new one, where its name says";
    EXPECT_EQ(hint(), s(text::EntryAdded));
    answer({{9638, u"Zona sur"_s}, {9644, u"0342"_s}});
    press(Qt::Key_Return);
    EXPECT_EQ(regions->currentRow(), 1);
    EXPECT_EQ(regions->gridModel()->cellText(1, 0), u"Zona sur"_s);
    answer({{9638, u"Zona sur"_s}, {9644, u"03x"_s}});
    // On purpose: a letter in an area code is accepted in a new region but fails in a change.
    ask.wait(s(text::InvalidValue));
    press(Qt::Key_F2);
    EXPECT_EQ(allRows(*s.clientes, "select nom, ctel from cldepartamento order by nom"),
              u"Norte|011\nZona sur|0342\n"_s);

    tabs->setCurrentIndex(1);
    auto *places = the<ui::Grid>(u"grdLocalidad"_s);
    answer({{9639, u"Alba"_s}, {9645, u"100"_s}, {9646, u"norte"_s}});
    pressIn(places, Qt::Key_Insert);
    EXPECT_EQ(places->gridModel()->cellText(0, 2), u"Norte"_s);
    ask.wait(s(text::DeleteQuestion));
    press(Qt::Key_Delete);
    EXPECT_EQ(places->gridModel()->allRows(), 0);
    press(Qt::Key_Delete);
    EXPECT_FALSE(the<QPushButton>(u"cmdEL"_s)->isEnabled());
    for (const QChar list : u"LDMREP"_s)
        EXPECT_EQ(form->findChild<QPushButton *>(u"cmdE"_s + list) == nullptr, list == u'D');
}
