#include "agenda/frmturnos.h"
#include "agenda_clinic.h"
#include "texts/agenda.h"
#include "texts/clients.h"
#include "texts/texts.h"
#include "ui/completion_list.h"
#include "ui/day_box.h"
#include "ui/grid.h"

#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

using namespace agenda;
using namespace Qt::StringLiterals;

namespace
{

class Dialog : public ClinicWithAgenda
{
protected:
    explicit Dialog(store::Language language = store::Language::English)
        : ClinicWithAgenda(language)
    {
    }
    void open(const QVariantMap &parameters = {})
    {
        form = std::make_unique<frmTurnos>(s);
        form->setWindowModality(Qt::NonModal); // so that the test can go on
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

class DialogInEachLanguage : public Dialog, public testing::WithParamInterface<store::Language>
{
protected:
    DialogInEachLanguage() : Dialog(GetParam()) {}
};

} // namespace

TEST_P(DialogInEachLanguage, BooksByKeysAlone)
{
    open();
    EXPECT_EQ(the<QLabel>(u"lblPaciente"_s)->text(), u"Toby"_s) << "the selected patient";
    EXPECT_FALSE(the<QCheckBox>(u"chkRec"_s)->isEnabled());
    EXPECT_EQ(the<QLineEdit>(u"txtHora"_s)->text(), longHour({9, 0}));
    type(u"a check at"_s); // the rest is completed
    EXPECT_EQ(the<ui::ListWithCompleted>(u"cmbSel"_s)->Id(), visit);
    EXPECT_EQ(help(), s(text::MoreConceptsHint));
    EXPECT_TRUE(the<QCheckBox>(u"chkRec"_s)->isEnabled());
    press(Qt::Key_Return);
    press(Qt::Key_Up); // tomorrow
    press(Qt::Key_Return);
    type(u"1030"_s);
    press(Qt::Key_Return);
    EXPECT_TRUE(help().contains(longHour({10, 30}))) << help().toStdString();
    type(u"10.15"_s);
    press(Qt::Key_Tab);
    EXPECT_EQ(the<QLineEdit>(u"txtAla"_s)->text(), longHour({10, 15}));
    ASSERT_EQ(focus(), u"chkRec"_s);
    press(Qt::Key_Space);
    press(Qt::Key_Tab);
    type(u"Ada's"_s);
    press(Qt::Key_Return);
    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(tasks("tip, ida, dia, hor, ala, medio, des"),
              u"202|1|2026-03-12|10:30:00|10:15:00|1|Adas\n"_s);
}

INSTANTIATE_TEST_SUITE_P(Languages, DialogInEachLanguage,
                         testing::Values(store::Language::Spanish, store::Language::Portuguese,
                                         store::Language::English));

TEST_F(Dialog, AnAlarmIsOptionalAndAWrongOneIsNoneWithoutAWord)
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
    EXPECT_EQ(tasks("tip, ida, dia, hor, ala, medio"), u"203|2|2026-03-16|16:00:00||0\n"_s);
}

TEST_F(Dialog, WhatIsMissingIsToldAndNothingTypedIsLost)
{
    open();
    the<QLineEdit>(u"txtDesc"_s)->setFocus();
    type(u"long story"_s);
    press(Qt::Key_Return);
    EXPECT_EQ(help(), s(text::ChooseConceptFirst));
    EXPECT_EQ(focus(), u"cmbSel"_s);
    type(u"a check"_s);
    auto *hour = the<QLineEdit>(u"txtHora"_s);
    hour->setText(u"noon"_s);
    the<QPushButton>(u"cmdAgendar"_s)->click();
    EXPECT_EQ(help(), s(text::TypeTheTime));
    EXPECT_EQ(focus(), u"txtHora"_s);
    EXPECT_EQ(tasks(), QString());
    type(u"12"_s);
    ask.wait(s(text::PrintSummaryQuestion), false);
    the<QPushButton>(u"cmdAgendar"_s)->click();
    EXPECT_EQ(tasks("hor, des"), u"12:00:00|long story\n"_s);
}

TEST_F(Dialog, NobodyIsRemindedOfAnOwnTaskOrWithoutAPatient)
{
    open({{u"ida"_s, 0}});
    EXPECT_EQ(the<QLabel>(u"lblPaciente"_s)->text(), s(text::NoPatientChosen));
    type(u"a check"_s);
    EXPECT_FALSE(the<QCheckBox>(u"chkRec"_s)->isEnabled());
    ask.wait(s(text::LeaveUnsavedQuestion), false);
    press(Qt::Key_Escape);
    EXPECT_FALSE(form->isVisible());
    open();
    type(u"a check"_s);
    the<QCheckBox>(u"chkRec"_s)->setChecked(true);
    the<ui::ListWithCompleted>(u"cmbSel"_s)->setFocus();
    the<ui::ListWithCompleted>(u"cmbSel"_s)->lineEdit()->selectAll();
    type(s(text::UserTask));
    EXPECT_FALSE(the<QCheckBox>(u"chkRec"_s)->isChecked());
    the<QPushButton>(u"cmdAgendar"_s)->click();
    EXPECT_EQ(tasks("tip, ida, medio"), u"-100|1|0\n"_s);
}

TEST_F(Dialog, WhatWasChangedByHandIsNotDroppedWithoutAQuestion)
{
    s.reloj.now = [this] { return QDateTime(hoy, QTime(9, 0, 37)); };
    open();
    the<QLineEdit>(u"txtHora"_s)->setFocus();
    press(Qt::Key_Tab); // rewrites the hour, to the minute
    press(Qt::Key_Escape);
    EXPECT_FALSE(form->isVisible());
    const std::function<void()> changes[] = {
        [this] { the<QLineEdit>(u"txtDesc"_s)->setText(u"brings papers"_s); },
        [this] { the<QLineEdit>(u"txtHora"_s)->setText(u"10"_s); },
        [this] { the<QLineEdit>(u"txtAla"_s)->setText(u"soon"_s); },
        [this] { the<ui::DayBox>(u"dtpDia"_s)->setDay(hoy.addDays(1)); },
        [this] { type(u"a check"_s); },
    };
    for (const auto &change : changes) {
        open();
        change();
        ask.wait(s(text::LeaveUnsavedQuestion), true); // stay in the form
        press(Qt::Key_Escape);
        EXPECT_TRUE(form->isVisible());
        ask.wait(s(text::LeaveUnsavedQuestion), false);
        the<QPushButton>(u"cmdVolver"_s)->click();
        EXPECT_FALSE(form->isVisible());
    }
}

TEST_F(Dialog, AReminderForTodayIsToldToGoOutNoMore)
{
    open();
    type(u"a check"_s);
    auto *reminder = the<QCheckBox>(u"chkRec"_s);
    reminder->click();
    EXPECT_EQ(help(), s(text::ReminderGoesInTheMorning));
    EXPECT_TRUE(reminder->isEnabled());
    the<QLineEdit>(u"txtHora"_s)->setFocus();
    press(Qt::Key_Tab);
    EXPECT_TRUE(help().contains(s(text::ReminderGoesInTheMorning)))
        << "it is not pushed out by the hour";
    the<ui::DayBox>(u"dtpDia"_s)->setDay(hoy.addDays(1));
    EXPECT_EQ(help(), s(text::MoreConceptsHint));
    the<ui::DayBox>(u"dtpDia"_s)->setDay(hoy);
    EXPECT_EQ(help(), s(text::ReminderGoesInTheMorning));
    reminder->click();
    EXPECT_EQ(help(), s(text::MoreConceptsHint));
}

TEST_F(Dialog, TheListGoesWithTheDayAndScrollsToWhatIsNear)
{
    for (int i = 0; i < 40; ++i)
        task(control, 1 + i % 2, hoy, QTime(8, 0).addSecs(i * 20 * 60));
    task(visit, 2, hoy.addDays(1), {9, 10});
    open();
    auto *list = the<ui::Grid>(u"GTurnos"_s);
    EXPECT_EQ(list->gridModel()->allRows(), 40);
    auto *hour = the<QLineEdit>(u"txtHora"_s);
    hour->setFocus();
    hour->selectAll();
    type(u"15"_s);
    press(Qt::Key_Tab);
    EXPECT_EQ(list->currentRow(), 21); // 15:00 itself
    EXPECT_EQ(list->indexAt({1, 1}).row(), 20) << "the one before it on top";
    list->sortByColumn(2, Qt::AscendingOrder); // Mia's first in the list
    hour->setFocus();
    hour->selectAll();
    type(u"15"_s);
    press(Qt::Key_Tab);
    EXPECT_EQ(list->gridModel()->cellText(list->currentRow(), 1), u"15:00"_s);
    the<ui::DayBox>(u"dtpDia"_s)->setDay(hoy.addDays(1));
    ASSERT_EQ(list->gridModel()->allRows(), 1);
    EXPECT_EQ(list->gridModel()->cellText(0, 2), u"Mia"_s);
}
