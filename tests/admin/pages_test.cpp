#include "admin/admin_forms.h"
#include "admin/frmconfiguracion.h"
#include "messages/templates.h"
#include "store/settings_row.h"
#include "support/clinic.h"
#include "ui/bound.h"
#include "ui/form_registry.h"
#include "ui/grid.h"
#include "ui/help_line.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTest>

using namespace Qt::StringLiterals;

namespace
{

/// Pages that tell the program what to do by itself, worked by keys.
class AutomaticPages : public Clinica
{
protected:
    AutomaticPages()
    {
        s.carpetaDePrograma = program.path() + u'/';
        RegistrarFormulariosDeAdministracion(s, forms);
    }
    void open(const QString &page)
    {
        ASSERT_TRUE(forms.Abrir(u"frmConfiguracion"_s, {{u"pagina"_s, page}}));
        form = qobject_cast<frmConfiguracion *>(forms.Cargar(u"frmConfiguracion"_s));
        ASSERT_TRUE(form && QTest::qWaitForWindowActive(form));
    }
    void close()
    {
        press(Qt::Key_Escape);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        ASSERT_FALSE(form);
    }
    void press(Qt::Key k, Qt::KeyboardModifiers m = {})
    {
        QWidget *at = form->focusWidget() ? form->focusWidget() : form.data();
        QTest::keyClick(at, k, m);
    }
    template <typename W>
    W *the(const QString &name)
    {
        auto *w = form->findChild<W *>(name);
        if (!w)
            ADD_FAILURE() << "no control " << name.toStdString();
        return w;
    }
    void choose(const QString &group, int option)
    {
        the<GrupoDeOpciones>(group)->findChild<QRadioButton *>(u"opt%1"_s.arg(option))->setFocus();
        press(Qt::Key_Space);
    }
    void type(const QString &name, const QString &text)
    {
        auto *box = the<QLineEdit>(name);
        box->setFocus();
        box->selectAll();
        press(Qt::Key_Delete);
        QTest::keyClicks(box, text);
        press(Qt::Key_Return);
    }
    QString stored(std::string_view columns)
    {
        return Filas(*s.morvane, "select " + std::string(columns) + " from configuracion")
            .trimmed();
    }

    QTemporaryDir program;
    Formularios forms;
    QPointer<frmConfiguracion> form;
};

class TemplatePage : public AutomaticPages
{
protected:
    TemplatePage()
    {
        s.clientes->Execute("insert into clientes (idc, ayn) values (7, 'Ana Paz')");
        s.clientes->Execute("insert into mascotas (idm, idc, nom) values (9, 7, 'Toby')");
        GuardarAjuste(s, "mensajeriacumplemail", u"Happy <nommas>!"_s);
    }
    void openAtBirthdays()
    {
        open(u"mensajes"_s);
        list()->setFocus();
        for (int i = 0; i < 4; ++i)
            press(Qt::Key_Down);
        ASSERT_EQ(text()->toPlainText(), u"Happy <nommas>!"_s);
    }
    QComboBox *list() { return the<QComboBox>(u"cmbAMensaje"_s); }
    QPlainTextEdit *text() { return the<QPlainTextEdit>(u"RTxtMen"_s); }
    QString preview() { return the<QPlainTextEdit>(u"txtVista"_s)->toPlainText(); }
    void write(const QString &more)
    {
        text()->setFocus();
        text()->moveCursor(QTextCursor::End);
        QTest::keyClicks(text(), more);
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
    QString shown;
    for (const QString &name : names)
        shown += QString::number(the<GrupoDeOpciones>(name)->Valor()) + u'|';
    EXPECT_EQ(shown.chopped(1), stored(columns));
    EXPECT_EQ(stored(columns), u"2|2|1|1|1|1|1|1|1|3"_s);
    for (const QString &name : names) {
        const auto options = the<GrupoDeOpciones>(name)->findChildren<QRadioButton *>();
        choose(name, options.size() == 3 || name == u"AutNuevoCliente" ? 1 : 2);
        EXPECT_FALSE(the<LineaDeAyuda>(u"Ayu"_s)->text().startsWith(u'#')) << name.toStdString();
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
    const auto shown = [this](const QString &name) { return the<GrupoDeOpciones>(name)->Valor(); };
    EXPECT_EQ(shown(u"MedidasRevac"_s), 4) << "never chosen is off";
    EXPECT_EQ(shown(u"MedidasCumple"_s), 4);
    EXPECT_EQ(shown(u"MedidasDeudores"_s), 1);
    EXPECT_EQ(shown(u"alimentomail"_s), 1);
    auto *second = the<QCheckBox>(u"MedidasRevacDescont"_s);
    EXPECT_TRUE(second->isChecked());
    const auto now = [this] {
        return stored("MedidasRevac, MedidasCumple, MedidasDeudores, MedidasRevacDescont, "
                      "alimentomail, tiempovencimiento, diasdeudores");
    };
    second->setFocus();
    press(Qt::Key_Space);
    choose(u"MedidasRevac"_s, 3);
    choose(u"MedidasCumple"_s, 2);
    choose(u"MedidasDeudores"_s, 2);
    choose(u"alimentomail"_s, 2);
    type(u"tiempovencimiento"_s, u"7d"_s);
    type(u"diasdeudores"_s, u"30"_s);
    EXPECT_EQ(now(), u"3|2|0|0|0|7|30"_s);
    second->setFocus();
    press(Qt::Key_Space);
    choose(u"MedidasRevac"_s, 4);
    choose(u"MedidasDeudores"_s, 1);
    choose(u"alimentomail"_s, 1);
    type(u"diasdeudores"_s, u""_s);
    EXPECT_EQ(now(), u"4|2|1|1|-1|7|"_s);
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
    the<QCheckBox>(u"LeerPerfil"_s)->setFocus();
    press(Qt::Key_Space);
    EXPECT_EQ(stored("LeerPerfil"), u"0"_s);
    const auto marked = [this] {
        return Filas(*s.finanzas, "select idcat from flcategorias where CatPerfil");
    };
    the<QCheckBox>(u"CatPerfil4"_s)->setFocus();
    press(Qt::Key_Space);
    EXPECT_EQ(marked(), u"4\n"_s);
    press(Qt::Key_Space);
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
                shown << the<QLineEdit>(name)->accessibleName() + u'='
                             + the<QLineEdit>(name)->text();
        return shown.join(u", "_s);
    };
    const auto pick = [&](int id) {
        species->setFocus();
        press(Qt::Key_Home);
        while (species->currentData() != id && species->currentIndex() + 1 < species->count())
            press(Qt::Key_Down);
    };
    pick(1);
    EXPECT_EQ(boxes(), u"%1=, %2=400, %3="_s.arg(s(2632), s(2633), s(2634)));
    type(u"txtdetali3"_s, u"900.5"_s);
    pick(2);
    EXPECT_EQ(boxes(), s(9700) + u"=0.75"_s);
    type(u"txtdetali"_s, u"1.25"_s);
    pick(3);
    EXPECT_EQ(boxes(), s(9700) + u'=');
    type(u"txtdetali"_s, u"8"_s);
    type(u"txtdetali"_s, u""_s);
    pick(1);
    the<QLineEdit>(u"txtdetali2"_s)->setFocus();
    QTest::keyClicks(the<QLineEdit>(u"txtdetali2"_s), u"5"_s);
    close(); // what is being typed counts
    EXPECT_EQ(stored("detali1, detali2, detali3"), u"|4005|900.5"_s);
    EXPECT_EQ(Filas(*s.clientes, "select id, ali from mlespecies order by id"),
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
    EXPECT_EQ(form->focusWidget(), text()) << "one goes on typing";
    EXPECT_TRUE(preview().endsWith(u"Ana PazToby"));
    close();
    EXPECT_TRUE(stored("mensajeriacumplemail").endsWith(u"<NomCli><NomMas>"));
}

TEST_F(TemplatePage, EachEntryHasItsTextAndTheSentOneForFeaturedStays)
{
    s.morvane->Execute("update configuracion set MensajeriaSoloADestacados = 'as sent', "
                       "MensajeriaCumpleMailDestacados = 'Dear client,'");
    openAtBirthdays();
    list()->setFocus();
    press(Qt::Key_Down);
    write(u" edited"_s);
    list()->setFocus();
    press(Qt::Key_Up);
    EXPECT_EQ(text()->toPlainText(), u"Happy <nommas>!"_s);
    EXPECT_EQ(stored("MensajeriaCumpleMailDestacados"), u"Dear client, edited"_s);
    EXPECT_EQ(ComponerMensaje(s, -51, 7, 9, 0, 1), u"as sent"_s) << "intended";
    EXPECT_EQ(list()->count(), 13);
}

TEST_F(TemplatePage, ATextThatCannotBeStoredIsNotLost)
{
    openAtBirthdays();
    s.morvane->Execute("alter table configuracion drop column mensajeriacumplemail");
    write(u" Long work"_s);
    for (int i = 0; i < 2; ++i) // leaving the text, then another entry
        ask.Espera(s(4604));
    list()->setFocus();
    press(Qt::Key_Down);
    EXPECT_EQ(list()->currentIndex(), 4) << "it stays on its entry";
    EXPECT_TRUE(text()->toPlainText().endsWith(u"Long work"));
    text()->document()->setModified(false);
}

TEST_F(TemplatePage, ThePreviewTakesAnyClientOrSaysThatThereIsNone)
{
    s.clientes->Execute("insert into clientes (idc, ayn) values (8, 'Paula [2]')");
    s.clientes->Execute("insert into clientes (idc, ayn) values (9, 'Paula Sol')");
    s.clientes->Execute("insert into mascotas (idm, idc, nom) values (11, 9, 'Luna')");
    s.IdGlobal = {9, 11};
    openAtBirthdays();
    EXPECT_EQ(preview(), u"Happy Luna!"_s) << "the session's patient";
    auto *another = the<QPushButton>(u"cmdOtro"_s);
    const auto pick = [&](const QString &name) {
        ask.EsperaTexto(s(9718), name);
        QTest::keyClick(another, Qt::Key_Space);
        return preview();
    };
    EXPECT_EQ(pick(u"ana"_s), u"Happy Toby!"_s);
    EXPECT_EQ(pick(u"Paula ["_s), u"Happy !"_s);
    ask.EsperaTexto(s(9718), u"pau"_s);
    ask.EsperaSeleccion(s(14), QList<int>{1});
    QTest::keyClick(another, Qt::Key_Space);
    EXPECT_EQ(preview(), u"Happy Luna!"_s);
    ask.EsperaTexto(s(9718), u"zz"_s);
    ask.Espera(s(9719));
    QTest::keyClick(another, Qt::Key_Space);
    EXPECT_EQ(preview(), u"Happy Luna!"_s);
    close();

    s.clientes->Execute("delete * from clientes");
    open(u"mensajes"_s);
    EXPECT_EQ(preview(), QString());
    EXPECT_EQ(the<QPlainTextEdit>(u"txtVista"_s)->placeholderText(), s(9720));
    EXPECT_FALSE(the<QPushButton>(u"cmdOtro"_s)->isEnabled());
}

TEST_F(AutomaticPages, ListsAreWorkedByKeys)
{
    open(u"listas"_s);
    auto *tabs = the<QTabWidget>(u"tabListas"_s);
    EXPECT_EQ(tabs->count(), 6);
    auto *regions = the<Grilla>(u"grdDepartamento"_s);
    regions->setFocus();
    press(Qt::Key_Delete); // there is no way to delete a region
    ask.EsperaTexto(s(9638), u"Norte"_s);
    ask.EsperaTexto(s(9644), u"011"_s);
    press(Qt::Key_Insert);
    ask.EsperaTexto(s(9638), u"Centro"_s);
    ask.EsperaTexto(s(9644), u"0341"_s);
    press(Qt::Key_Insert);
    EXPECT_EQ(regions->FilaActual(), 0) << "the new one, where its name says";
    EXPECT_EQ(the<LineaDeAyuda>(u"Ayu"_s)->text(), s(9658));
    ask.EsperaTexto(s(9638), u"Zona sur"_s);
    ask.EsperaTexto(s(9644), u"0342"_s);
    press(Qt::Key_Return);
    EXPECT_EQ(regions->FilaActual(), 1);
    EXPECT_EQ(regions->Modelo()->TextoDeCelda(1, 0) + regions->Modelo()->TextoDeCelda(1, 1),
              u"Zona sur0342"_s);
    ask.EsperaTexto(s(9638), u"Zona sur"_s);
    ask.EsperaTexto(s(9644), u"03x"_s);
    ask.Espera(s(31)); // a letter fails in the store: intended
    press(Qt::Key_F2);
    EXPECT_EQ(regions->Modelo()->TextoDeCelda(1, 1), u"0342"_s);

    tabs->setCurrentIndex(1);
    the<Grilla>(u"grdLocalidad"_s)->setFocus();
    ask.EsperaTexto(s(9639), u"Alba"_s);
    ask.EsperaTexto(s(9645), u"100"_s);
    ask.EsperaTexto(s(9646), u"norte"_s);
    press(Qt::Key_Insert);
    EXPECT_EQ(the<Grilla>(u"grdLocalidad"_s)->Modelo()->TextoDeCelda(0, 2), u"Norte"_s);
    ask.Espera(s(3));
    press(Qt::Key_Delete);
    EXPECT_EQ(the<Grilla>(u"grdLocalidad"_s)->Modelo()->Filas(), 0);
    press(Qt::Key_Delete);
    EXPECT_FALSE(the<QPushButton>(u"cmdEL"_s)->isEnabled());

    for (const QString &letter : {u"L"_s, u"D"_s, u"M"_s, u"R"_s, u"E"_s, u"P"_s}) {
        the<QPushButton>(u"cmdN"_s + letter);
        the<QPushButton>(u"cmdM"_s + (letter == u"P" ? u"p"_s : letter));
        EXPECT_EQ(form->findChild<QPushButton *>(u"cmdE"_s + letter) == nullptr, letter == u"D");
    }
}
