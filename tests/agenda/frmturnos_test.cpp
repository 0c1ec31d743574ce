#include "agenda/frmturnos.h"
#include "agenda_clinic.h"
#include "ui/completion_list.h"
#include "ui/grid.h"

#include <QApplication>
#include <QCheckBox>
#include <QDateEdit>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

using namespace Qt::StringLiterals;

namespace
{

class Dialogo : public ClinicaConAgenda
{
protected:
    explicit Dialogo(Idioma idioma = Idioma::Ingles) : ClinicaConAgenda(idioma) {}
    void open(const QVariantMap &parameters = {})
    {
        form = std::make_unique<frmTurnos>(s);
        form->setWindowModality(Qt::NonModal); // the test goes on beside it
        form->opened(parameters);
        form->show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(form.get()));
    }
    void press(Qt::Key k, Qt::KeyboardModifiers m = {})
    {
        QTest::keyClick(form->focusWidget(), k, m);
    }
    void type(const QString &text) { QTest::keyClicks(form->focusWidget(), text); }
    template <typename W>
    W *the(const QString &name)
    {
        return form->findChild<W *>(name);
    }
    QString help() { return the<QLabel>(u"Ayu"_s)->text(); }
    QString focus() { return form->focusWidget()->objectName(); }

    std::unique_ptr<frmTurnos> form;
};

class DialogoEnCadaIdioma : public Dialogo, public testing::WithParamInterface<Idioma>
{
protected:
    DialogoEnCadaIdioma() : Dialogo(GetParam()) {}
};

} // namespace

TEST_P(DialogoEnCadaIdioma, BooksByKeysAlone)
{
    open();
    EXPECT_EQ(the<QLabel>(u"lblPaciente"_s)->text(), u"Toby"_s) << "the selected patient";
    EXPECT_FALSE(the<QCheckBox>(u"chkRec"_s)->isEnabled());
    EXPECT_EQ(the<QLineEdit>(u"txtHora"_s)->text(), HoraLarga({9, 0}));
    type(u"a check at"_s); // completed with the rest
    EXPECT_EQ(the<ListaConCompletado>(u"cmbSel"_s)->Id(), visita);
    EXPECT_EQ(help(), s(1308));
    EXPECT_TRUE(the<QCheckBox>(u"chkRec"_s)->isEnabled());
    press(Qt::Key_Return);
    press(Qt::Key_Up); // tomorrow
    press(Qt::Key_Return);
    type(u"1030"_s);
    press(Qt::Key_Return);
    EXPECT_TRUE(help().contains(HoraLarga({10, 30}))) << help().toStdString();
    type(u"10.15"_s);
    press(Qt::Key_Tab);
    EXPECT_EQ(the<QLineEdit>(u"txtAla"_s)->text(), HoraLarga({10, 15}));
    ASSERT_EQ(focus(), u"chkRec"_s);
    press(Qt::Key_Space);
    press(Qt::Key_Tab);
    ask.Espera(s(4624)); // the apostrophe is refused
    type(u"Ada's"_s);
    press(Qt::Key_Return);
    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(tareas("tip, ida, dia, hor, ala, medio, des"),
              u"202|1|2026-03-12|10:30:00|10:15:00|1|Adas\n"_s);
}

INSTANTIATE_TEST_SUITE_P(Languages, DialogoEnCadaIdioma,
                         testing::Values(Idioma::Espanol, Idioma::Portugues, Idioma::Ingles));

TEST_F(Dialogo, AnAlarmIsOptionalAndAWrongOneIsNoneWithoutAWord)
{
    open({{u"ida"_s, 2}, {u"dia"_s, hoy.addDays(5)}, {u"hora"_s, QTime(16, 0)}});
    EXPECT_EQ(the<QLabel>(u"lblPaciente"_s)->text(), u"Mia"_s);
    type(u"a surgery"_s);
    press(Qt::Key_Return);
    press(Qt::Key_Return);
    press(Qt::Key_Return);
    type(u"soon"_s);
    QFocusEvent menu(QEvent::FocusOut, Qt::PopupFocusReason);
    QApplication::sendEvent(form->focusWidget(), &menu);
    EXPECT_EQ(the<QLineEdit>(u"txtAla"_s)->text(), u"soon"_s) << "a menu is not leaving the box";
    press(Qt::Key_Return);
    EXPECT_EQ(the<QLineEdit>(u"txtAla"_s)->text(), QString());
    ASSERT_EQ(focus(), u"txtDesc"_s);
    press(Qt::Key_Return);
    EXPECT_EQ(tareas("tip, ida, dia, hor, ala, medio"), u"203|2|2026-03-16|16:00:00||0\n"_s);
}

TEST_F(Dialogo, WhatIsMissingIsToldAndNothingTypedIsLost)
{
    open();
    the<QLineEdit>(u"txtDesc"_s)->setFocus();
    type(u"long story"_s);
    press(Qt::Key_Return);
    EXPECT_EQ(help(), s(9941));
    EXPECT_EQ(focus(), u"cmbSel"_s);
    type(u"a check"_s);
    auto *hour = the<QLineEdit>(u"txtHora"_s);
    hour->setText(u"noon"_s);
    the<QPushButton>(u"cmdAgendar"_s)->click();
    EXPECT_EQ(help(), s(9942));
    EXPECT_EQ(focus(), u"txtHora"_s);
    EXPECT_EQ(tareas(), QString());
    type(u"12"_s);
    ask.Espera(s(1309), false);
    the<QPushButton>(u"cmdAgendar"_s)->click();
    EXPECT_EQ(tareas("hor, des"), u"12:00:00|long story\n"_s);
}

TEST_F(Dialogo, NobodyIsRemindedOfAnOwnTaskOrWithoutAPatient)
{
    open({{u"ida"_s, 0}});
    EXPECT_EQ(the<QLabel>(u"lblPaciente"_s)->text(), s(9940));
    type(u"a check"_s);
    EXPECT_FALSE(the<QCheckBox>(u"chkRec"_s)->isEnabled());
    ask.Espera(s(9515), false);
    press(Qt::Key_Escape);
    EXPECT_FALSE(form->isVisible());
    open();
    type(u"a check"_s);
    the<QCheckBox>(u"chkRec"_s)->setChecked(true);
    the<ListaConCompletado>(u"cmbSel"_s)->setFocus();
    the<ListaConCompletado>(u"cmbSel"_s)->lineEdit()->selectAll();
    type(s(1109));
    EXPECT_FALSE(the<QCheckBox>(u"chkRec"_s)->isChecked());
    the<QPushButton>(u"cmdAgendar"_s)->click();
    EXPECT_EQ(tareas("tip, ida, medio"), u"-100|1|0\n"_s);
}

TEST_F(Dialogo, WhatWasChangedByHandIsNotDroppedWithoutAQuestion)
{
    s.reloj.ahora = [this] { return QDateTime(hoy, QTime(9, 0, 37)); };
    open();
    the<QLineEdit>(u"txtHora"_s)->setFocus();
    press(Qt::Key_Tab); // the hour is written anew, to the minute
    press(Qt::Key_Escape);
    EXPECT_FALSE(form->isVisible());
    const std::function<void()> changes[] = {
        [this] { the<QLineEdit>(u"txtDesc"_s)->setText(u"brings papers"_s); },
        [this] { the<QLineEdit>(u"txtHora"_s)->setText(u"10"_s); },
        [this] { the<QLineEdit>(u"txtAla"_s)->setText(u"soon"_s); },
        [this] { the<QDateEdit>(u"dtpDia"_s)->setDate(hoy.addDays(1)); },
        [this] { type(u"a check"_s); },
    };
    for (const auto &change : changes) {
        open();
        change();
        ask.Espera(s(9515), true); // goes on
        press(Qt::Key_Escape);
        EXPECT_TRUE(form->isVisible());
        ask.Espera(s(9515), false);
        the<QPushButton>(u"cmdVolver"_s)->click();
        EXPECT_FALSE(form->isVisible());
    }
}

TEST_F(Dialogo, AReminderForTodayIsToldToGoOutNoMore)
{
    open();
    type(u"a check"_s);
    auto *reminder = the<QCheckBox>(u"chkRec"_s);
    reminder->click();
    EXPECT_EQ(help(), s(9991));
    EXPECT_TRUE(reminder->isEnabled());
    the<QLineEdit>(u"txtHora"_s)->setFocus();
    press(Qt::Key_Tab);
    EXPECT_TRUE(help().contains(s(9991))) << "it is not pushed out by the hour";
    the<QDateEdit>(u"dtpDia"_s)->setDate(hoy.addDays(1));
    EXPECT_EQ(help(), s(1308));
    the<QDateEdit>(u"dtpDia"_s)->setDate(hoy);
    EXPECT_EQ(help(), s(9991));
    reminder->click();
    EXPECT_EQ(help(), s(1308));
}

TEST_F(Dialogo, TheListGoesWithTheDayAndScrollsToWhatIsNear)
{
    for (int i = 0; i < 40; ++i)
        tarea(control, 1 + i % 2, hoy, QTime(8, 0).addSecs(i * 20 * 60));
    tarea(visita, 2, hoy.addDays(1), {9, 10});
    open();
    auto *list = the<Grilla>(u"GTurnos"_s);
    EXPECT_EQ(list->Modelo()->Filas(), 40);
    auto *hour = the<QLineEdit>(u"txtHora"_s);
    hour->setFocus();
    hour->selectAll();
    type(u"15"_s);
    press(Qt::Key_Tab);
    EXPECT_EQ(list->FilaActual(), 21); // 15:00 itself
    EXPECT_EQ(list->indexAt({1, 1}).row(), 20) << "the one before it on top";
    list->sortByColumn(2, Qt::AscendingOrder); // Mia's first
    hour->setFocus();
    hour->selectAll();
    type(u"15"_s);
    press(Qt::Key_Tab);
    EXPECT_EQ(list->Modelo()->TextoDeCelda(list->FilaActual(), 1), u"15:00"_s);
    the<QDateEdit>(u"dtpDia"_s)->setDate(hoy.addDays(1));
    ASSERT_EQ(list->Modelo()->Filas(), 1);
    EXPECT_EQ(list->Modelo()->TextoDeCelda(0, 2), u"Mia"_s);
}
