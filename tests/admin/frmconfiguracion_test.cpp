#include "settings_form.h"
#include "store/settings_row.h"
#include "texts/admin.h"
#include "texts/texts.h"
#include "ui/grid.h"
#include "ui/theme.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QListWidget>
#include <QPushButton>
#include <QScrollArea>
#include <QStackedWidget>
#include <QTabBar>
#include <QToolButton>
#include <QWheelEvent>

using namespace Qt::StringLiterals;

namespace
{

class Settings : public SettingsForm
{
protected:
    using SettingsForm::SettingsForm;
    ~Settings() override { ui::applyTheme(*qApp, 1); }

    QListWidget *list() { return the<QListWidget>(u"lstPaginas"_s); }
};

class EachLanguage : public Settings, public testing::WithParamInterface<store::Language>
{
protected:
    EachLanguage() : Settings(GetParam()) {}
};

/// A control that can be focused has an accessible name, and its text is not cut off.
void checkControl(const QWidget *w, const std::string &page)
{
    const std::string who =
        page + ": " + w->metaObject()->className() + ' ' + w->objectName().toStdString();
    const auto *button = qobject_cast<const QAbstractButton *>(w);
    // Inner parts, whose view or tab bar speaks for them.
    const bool inner = qobject_cast<const QAbstractScrollArea *>(w->parentWidget())
                       || qobject_cast<const QTabBar *>(w);
    if ((w->focusPolicy() & Qt::TabFocus) && !inner) {
        EXPECT_FALSE(w->accessibleName().isEmpty()) << who;
    }
    if (button && !button->text().isEmpty()) {
        EXPECT_GE(w->width(), w->sizeHint().width()) << who;
    }
}

} // namespace

TEST_P(EachLanguage, EveryPageOpensByKeysAndTellsWhatItsControlsAre)
{
    open();
    form->resize(1020, 700);
    const int pages = list()->count();
    EXPECT_EQ(pages, frmConfiguracion::Pages().size());
    for (int i = 0; i < pages; ++i) {
        ASSERT_EQ(list()->currentRow(), i);
        EXPECT_FALSE(list()->item(i)->text().startsWith(u'#'));
        EXPECT_FALSE(list()->item(i)->icon().isNull()) << i;
        press(Qt::Key_Return);
        QWidget *first = form->focusWidget();
        const std::string page = frmConfiguracion::Pages().value(i).toStdString();
        EXPECT_NE(first, list()) << page << " has nothing to work with";
        for (const QWidget *w : form->findChildren<QWidget *>())
            if (w->isVisible())
                checkControl(w, page);
        const auto *area =
            qobject_cast<QScrollArea *>(form->findChild<QStackedWidget *>()->currentWidget());
        EXPECT_LE(area->widget()->minimumSizeHint().width(), area->viewport()->width()) << page;
        press(Qt::Key_PageDown, Qt::ControlModifier);
    }
    EXPECT_EQ(list()->currentRow(), 0) << "after the last comes the first";
    press(Qt::Key_PageUp, Qt::ControlModifier);
    EXPECT_EQ(list()->currentRow(), pages - 1);
}

INSTANTIATE_TEST_SUITE_P(, EachLanguage,
                         testing::Values(store::Language::Spanish, store::Language::Portuguese,
                                         store::Language::English));

TEST_F(Settings, ACommonUserIsRefused)
{
    s.user.ut = 1;
    ask.wait(u"Feature not available"_s);
    EXPECT_FALSE(forms.open(u"frmConfiguracion"_s));
}

TEST_F(Settings, OpensWhereItWasLeftAndReadsWhatOthersWrote)
{
    open(u"finanzas"_s);
    close();
    s.morvane->Execute("update configuracion set EntradaMoneda = 'Otra'");
    open();
    EXPECT_EQ(list()->currentItem()->text(), s(text::FinanceButton));
    EXPECT_EQ(text(u"EntradaMoneda"_s), u"Otra"_s);
}

TEST_F(Settings, ABoxIsWrittenWhenItIsLeftEvenByClosing)
{
    open(u"clinica"_s);
    type(u"txtNom"_s, u"El Arca"_s);
    EXPECT_EQ(s.clinic.nom, u"El Arca"_s);
    EXPECT_EQ(form->focusWidget(), the<QLineEdit>(u"txtPro"_s)) << "ENTER walks on";
    fill(u"txtDir"_s, u"Calle 5'"_s);
    EXPECT_TRUE(hint().startsWith(u"Can not use the character"_s));
    close();
    EXPECT_EQ(allRows(*s.morvane, "select nom, dir from veterinaria"), u"El Arca|Calle 5\n"_s);
}

TEST_F(Settings, APageThatCannotBeReadSaysSoOnce)
{
    s.morvane->Execute("alter table configuracion drop column horaracion2");
    s.morvane->Execute("alter table configuracion drop column horaracion3");
    s.configuracion.Requery();
    ask.wait(s(text::ErrorWasLogged));
    open(u"hospedaje"_s);
    EXPECT_EQ(hint(), s(text::PageUnreadable));
}

TEST_F(Settings, AFailureIsToldAndTheStoredValueShownAgain)
{
    s.morvane->Execute("update veterinaria set nom = 'Antes'");
    s.clinic.nom = u"Antes"_s;
    open(u"clinica"_s);
    s.morvane->Execute("alter table veterinaria drop column tel");
    ask.wait(u"\"Tel\""_s);
    type(u"txtTel"_s, u"1"_s);
    EXPECT_EQ(text(u"txtTel"_s), s.clinic.tel);
    EXPECT_TRUE(form->isVisible());
}

TEST_F(Settings, UsersAreWorkedFromTheGrid)
{
    s.morvane->Execute("delete * from usuarios");
    s.morvane->Execute("insert into usuarios (idu, nom, up, ut) values (1, 'Ana', '', 2)");
    s.morvane->Execute("update configuracion set contadorUsuarios = 1");
    open(u"usuarios"_s);
    auto *grid = the<ui::Grid>(u"grdUsr"_s);
    ask.wait(u"Add a user?"_s);
    ask.expectText(u"username"_s, u"Luis"_s);
    ask.expectText(u"password"_s, u""_s);
    ask.expectText(u"user type"_s, u"1"_s);
    pressIn(grid, Qt::Key_Insert);
    EXPECT_EQ(grid->gridModel()->cellText(grid->currentRow(), 0), u"Luis"_s);
    EXPECT_EQ(grid->gridModel()->cellText(grid->currentRow(), 1), u"Common"_s);
    ask.expectText(u"password"_s, u"gato"_s);
    press(Qt::Key_Return);
    EXPECT_EQ(allRows(*s.morvane, "select nom, up from usuarios order by idu"),
              u"Ana|\nLuis|gato\n"_s);
    ask.wait(u"Delete?"_s);
    press(Qt::Key_Delete);
    EXPECT_EQ(grid->gridModel()->allRows(), 1);
}

TEST_F(Settings, TheColourDressesTheProgramAtOnceAndIsStored)
{
    open(u"aspecto"_s);
    const QColor before = ui::paletteInUse().accent;
    auto *blue = the<QToolButton>(u"Color1"_s);
    QTest::mouseClick(blue, Qt::LeftButton);
    EXPECT_NE(ui::paletteInUse().accent, before);
    EXPECT_EQ(ui::paletteInUse().accent,
              ui::computePalette(stored("PrincipalColor").toInt(), false).accent);
    EXPECT_TRUE(blue->isChecked());
    QTest::mouseClick(the<QToolButton>(u"Color0"_s), Qt::LeftButton);
    EXPECT_EQ(stored("PrincipalColor"), u"1"_s);
    EXPECT_EQ(ui::paletteInUse().accent, before);
    EXPECT_FALSE(blue->isChecked());
}

TEST_F(Settings, TheServerOfMailsBelongsToThisMachine)
{
    open(u"correo"_s);
    type(u"txtServidorMail"_s, u"smtp.example.com"_s);
    auto *kind = the<QComboBox>(u"cmbCifrado"_s);
    pressIn(kind, Qt::Key_Down);
    EXPECT_EQ(text(u"txtPuertoMail"_s), u"465"_s) << "the usual one follows";
    QWheelEvent wheel({2, 2}, kind->mapToGlobal(QPointF(2, 2)), {}, {0, -120}, Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(kind, &wheel);
    EXPECT_EQ(store::readClinicSetting(s, u"correo/cifrado"_s), u"tls"_s)
        << "the wheel writes nothing";
    EXPECT_EQ(store::readClinicSetting(s, u"correo/puerto"_s), QString())
        << "not what did not change";
    type(u"txtPuertoMail"_s, u"2525"_s);
    for (const QString &none : {u"0"_s, u"65536"_s}) {
        type(u"txtPuertoMail"_s, none);
        EXPECT_EQ(text(u"txtPuertoMail"_s), u"2525"_s) << none.toStdString();
        EXPECT_EQ(hint(), s(text::InvalidValue));
    }
    EXPECT_EQ(store::readClinicSetting(s, u"correo/servidor"_s), u"smtp.example.com"_s);
    QTest::mouseClick(the<QPushButton>(u"cmdVerCuenta"_s), Qt::LeftButton);
    EXPECT_EQ(list()->currentRow(), 0) << "the account stands with the clinic's data";
    ask.expectText(u"User name"_s, u"ana"_s);
    ask.expectText(u"Password"_s, u"secreta"_s);
    QTest::mouseClick(the<QPushButton>(u"cmdModMail"_s), Qt::LeftButton);
    EXPECT_EQ(the<QLabel>(u"lblUsuarioMail"_s)->text(), u"User: ana"_s);
    for (const QLabel *label : form->findChildren<QLabel *>())
        EXPECT_FALSE(label->text().contains(u"secreta"));

    open(u"correo"_s);
    type(u"txtServidorMail"_s, u"localhost"_s);
    type(u"txtPuertoMail"_s, u"1"_s); // nothing listens there
    QTest::mouseClick(the<QPushButton>(u"cmdProbarMail"_s), Qt::LeftButton);
    EXPECT_TRUE(hint().startsWith(u"The mail could not be sent: "_s)) << hint().toStdString();
}

TEST_F(Settings, KennelsWordsAndChoicesReachTheSettingsRow)
{
    open(u"hospedaje"_s);
    type(u"CantidadCaniles"_s, u"1x2"_s);
    EXPECT_EQ(stored("CantidadCaniles"), u"12"_s);
    fill(u"HoraRacion4"_s, u"2130"_s);
    press(Qt::Key_PageUp, Qt::ControlModifier); // leaving the page writes too
    EXPECT_EQ(stored("HoraRacion4"), u"21:30:00"_s);
    type(u"EntradaMoneda"_s, u"0123456789ABC"_s);
    EXPECT_EQ(stored("EntradaMoneda"), u"0123456789"_s);
    auto *price = the<QCheckBox>(u"GuardarPrecioVentas"_s);
    const bool was = price->isChecked();
    pressIn(price, Qt::Key_Space);
    EXPECT_EQ(stored("GuardarPrecioVentas"), was ? u"0"_s : u"-1"_s);
    type(u"OSDuracionSol"_s, u"6"_s);
    EXPECT_EQ(stored("OSDuracionSol"), u"6"_s);
}
