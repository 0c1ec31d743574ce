#include "agenda/agenda_forms.h"
#include "agenda/frmagenda.h"
#include "agenda/hours_view.h"
#include "agenda_clinic.h"
#include "texts/agenda.h"
#include "texts/texts.h"
#include "ui/day_box.h"
#include "ui/form_registry.h"
#include "ui/grid.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QScrollBar>
#include <QTabBar>
#include <QTest>
#include <QTimer>

using namespace agenda;
using namespace Qt::StringLiterals;

namespace
{

/// Replaces the registry form and shows nothing.
struct Registry : ui::FormBase {
    explicit Registry(Sesion &s) : ui::FormBase(s, u"frmPropietarios"_s) {}
    void opened(const QVariantMap &) override { ++times; }
    void setVisible(bool) override {}
    int times = 0;
};

class Agenda : public ClinicWithAgenda
{
protected:
    explicit Agenda(store::Language language = store::Language::English)
        : ClinicWithAgenda(language)
    {
        s.programFolder = program.path() + u'/';
        registerAgendaForms(s, forms);
        forms.enrol(u"frmPropietarios"_s, [this] { return new Registry(s); });
    }
    void open(const QVariantMap &parameters = {})
    {
        ASSERT_TRUE(forms.open(u"frmagenda"_s, parameters));
        form = qobject_cast<frmagenda *>(forms.load(u"frmagenda"_s));
        ASSERT_TRUE(form && QTest::qWaitForWindowActive(form));
    }
    template <typename W>
    W *the(const QString &name)
    {
        return form->findChild<W *>(name);
    }
    ui::Grid *list() { return the<ui::Grid>(u"GAgenda"_s); }
    HoursView *hours() { return the<HoursView>(u"Horas"_s); }
    QString help() { return the<QLabel>(u"Ayu"_s)->text(); }
    void press(QWidget *where, Qt::Key k, Qt::KeyboardModifiers m = {})
    {
        QTest::keyClick(where, k, m);
    }
    void click(const QString &button) { the<QPushButton>(button)->click(); }
    QDate day() { return the<ui::DayBox>(u"dtpAgenda"_s)->day(); }
    QString details()
    {
        QStringList rows;
        for (int i = 0; i < list()->gridModel()->allRows(); ++i)
            rows << list()->gridModel()->cellText(i, 1) + u' '
                        + list()->gridModel()->cellText(i, 0);
        return rows.join(u", "_s);
    }
    QString moved() { return tasks("id, dia, hor"); }

    /// Drags a task from the middle of its first lines to an hour of a day, and drops it there
    /// unless @p release is false.
    void drag(int id, QDate toDay, QTime toHour, bool release = true)
    {
        const QPoint hour = hours()->pointOf(toDay, toHour);
        drag(id, hour + QPoint(0, 4), release);
    }
    void drag(int id, QPoint to, bool release = true)
    {
        QWidget *ground = hours()->viewport();
        const QPoint held = hours()->placeOf(id).topLeft() + QPoint(6, 4);
        QTest::mousePress(ground, Qt::LeftButton, {}, held);
        for (int i = 1; i <= 4; ++i) {
            QMouseEvent move(QEvent::MouseMove, held + (to - held) * i / 4,
                             ground->mapToGlobal(held + (to - held) * i / 4), Qt::NoButton,
                             Qt::LeftButton, {});
            QApplication::sendEvent(ground, &move);
        }
        if (release)
            QTest::mouseRelease(ground, Qt::LeftButton, {}, to);
    }

    /// When the booking dialog opens, records its day and hour and closes it.
    void expectBooking(bool book = false)
    {
        QTimer::singleShot(0, qApp, [this, book] {
            QWidget *dialog = QApplication::activeModalWidget();
            ASSERT_TRUE(dialog);
            asked << dialog->findChild<ui::DayBox *>(u"dtpDia"_s)->day().toString(Qt::ISODate)
                         + u' ' + dialog->findChild<QLineEdit *>(u"txtHora"_s)->text() + u' '
                         + dialog->findChild<QLabel *>(u"lblPaciente"_s)->text();
            if (book) {
                QTest::keyClicks(dialog->findChild<QWidget *>(u"cmbSel"_s), u"a check"_s);
                QTest::keyClick(dialog->findChild<QWidget *>(u"txtDesc"_s), Qt::Key_Return);
            } else {
                QTest::keyClick(dialog, Qt::Key_Escape);
            }
        });
    }

    QStringList asked;
    QTemporaryDir program;
    ui::FormRegistry forms;
    QPointer<frmagenda> form;
};

class InEachLanguage : public Agenda, public testing::WithParamInterface<store::Language>
{
protected:
    InEachLanguage() : Agenda(GetParam()) {}
};

} // namespace

TEST_P(InEachLanguage, EveryControlHasANameRoomAndAKeyOfItsOwn)
{
    task(control, 1, hoy, {9, 0});
    open();
    QString keys;
    for (const QWidget *w : form->findChildren<QWidget *>()) {
        const auto *button = qobject_cast<const QPushButton *>(w);
        const bool inner = qobject_cast<const QAbstractScrollArea *>(w->parentWidget())
                           || w->objectName().startsWith(u"qt_");
        if (w->isVisible() && w->focusPolicy() & Qt::TabFocus && !inner) {
            EXPECT_FALSE(w->accessibleName().isEmpty())
                << w->metaObject()->className() << ' ' << w->objectName().toStdString();
        }
        if (!button || !button->isVisible())
            continue;
        EXPECT_GE(button->width(), button->sizeHint().width()) << button->text().toStdString();
        if (const auto at = button->text().indexOf(u'&'); at >= 0) {
            const QChar key = button->text()[at + 1].toLower();
            EXPECT_FALSE(keys.contains(key)) << button->text().toStdString();
            keys += key;
        }
    }
    EXPECT_EQ(keys.size(), 10);
    for (const QString &name : {u"GAgenda"_s, u"GKelvara"_s}) {
        const QHeaderView *titles = the<ui::Grid>(name)->horizontalHeader();
        for (int c = 0; c < titles->count() && !titles->isSectionHidden(c); ++c)
            EXPECT_GE(titles->sectionSize(c), titles->sectionSizeHint(c))
                << name.toStdString() << ' ' << c;
    }
    EXPECT_EQ(the<QTabBar>(u"tabAgenda"_s)->tabText(0), s(text::DayAgenda));
    EXPECT_EQ(list()->gridModel()->cellText(0, 3), s(text::NotAccomplished));
}

INSTANTIATE_TEST_SUITE_P(Languages, InEachLanguage,
                         testing::Values(store::Language::Spanish, store::Language::Portuguese,
                                         store::Language::English));

TEST_F(Agenda, OpensOnTheDayAndTheViewThatTheBoardNames)
{
    task(TaskKind::DoseReminder, 2, {}, {}, {}, {}, 1);
    task(control, 1, hoy.addDays(-1), {9, 0});
    open({{u"dia"_s, hoy.addDays(-1)}, {u"modo"_s, 1}});
    EXPECT_EQ(details(), u"09:00 A check"_s);
    press(list(), Qt::Key_PageDown, Qt::ControlModifier);
    EXPECT_EQ(day(), hoy);
    EXPECT_EQ(details(), QString());
    EXPECT_FALSE(the<QPushButton>(u"cmdEliminar"_s)->isEnabled());
    open({{u"modo"_s, 2}, {u"dia"_s, hoy}});
    const auto *own = the<ui::Grid>(u"GKelvara"_s)->gridModel();
    ASSERT_EQ(own->allRows(), 1);
    EXPECT_EQ(own->cellText(0, 1), u"Patient: Mia"_s);
    EXPECT_TRUE(own->cellText(0, 3) == s(text::NotAccomplished));
    open(); // without parameters: today's list
    EXPECT_EQ(the<QTabBar>(u"tabAgenda"_s)->currentIndex(), 0);
    click(u"cmdSemana"_s);
    click(u"cmdSiguiente"_s);
    EXPECT_EQ(day(), hoy.addDays(7));
    click(u"cmdAnterior"_s);
    EXPECT_EQ(day(), hoy);
}

TEST_F(Agenda, DelaysAndDeletesWhatIsSelectedInEitherDirection)
{
    for (int i = 0; i < 5; ++i)
        task(control, 1, hoy, QTime(9 + i, 0));
    open();
    EXPECT_EQ(the<ui::DayBox>(u"dtpPasarTarea"_s)->day(), hoy.addDays(1));
    press(list(), Qt::Key_Down);
    press(list(), Qt::Key_Down, Qt::ShiftModifier);
    ask.wait(s(text::DelayTasksQuestion));
    click(u"cmdPasarTarea"_s);
    EXPECT_EQ(details(), u"09:00 A check, 12:00 A check, 13:00 A check"_s);
    EXPECT_EQ(list()->currentRow(), 1) << "what comes next";
    press(list(), Qt::Key_Down);
    press(list(), Qt::Key_Up, Qt::ShiftModifier);
    ask.wait(s(text::DeleteQuestion));
    press(list(), Qt::Key_Delete);
    EXPECT_EQ(tasks("id, dia"), u"1|2026-03-11\n2|2026-03-12\n3|2026-03-12\n"_s);
    // Moved to the day shown: nothing leaves the list.
    the<ui::DayBox>(u"dtpPasarTarea"_s)->setDay(hoy);
    ask.wait(s(text::DelayTasksQuestion));
    click(u"cmdPasarTarea"_s);
    EXPECT_EQ(details(), u"09:00 A check"_s);
    ask.wait(s(text::DeleteQuestion));
    click(u"cmdEliminar"_s);
    EXPECT_EQ(list()->gridModel()->allRows(), 0);
    EXPECT_FALSE(the<QPushButton>(u"cmdPasarTarea"_s)->isEnabled());
}

TEST_F(Agenda, TheFootTellsWhereDelayedTasksWentAndForgetsADeletedOne)
{
    task(control, 1, hoy, {9, 0});
    task(visit, 2, hoy, {10, 0});
    task(TaskKind::UserTask, 1, hoy, {11, 0}, u"Order  gloves"_s);
    open();
    const QString before = moved();
    press(list(), Qt::Key_Down, Qt::ShiftModifier);
    ask.wait(s(text::DelayTasksQuestion) + u"\n\n2 tasks"_s);
    click(u"cmdPasarTarea"_s);
    EXPECT_TRUE(help().contains(u"A check at home (+1) → "_s
                                + QLocale().toString(hoy.addDays(1), QLocale::LongFormat)))
        << help().toStdString();
    EXPECT_EQ(day(), hoy);
    press(list(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(moved(), before);

    // Deleting a row selects the one below it, or the one above if it was the last.
    press(list(), Qt::Key_Home);
    ask.wait(s(text::DeleteQuestion) + u"\n\n09:00  A check, Toby"_s);
    press(list(), Qt::Key_Delete);
    EXPECT_TRUE(help().startsWith(u"A check at home"_s)) << help().toStdString();
    press(list(), Qt::Key_End);
    ask.wait(s(text::DeleteQuestion) + u"\n\n11:00  "_s + s(text::UserTask) + u", Order gloves"_s);
    press(list(), Qt::Key_Delete);
    EXPECT_TRUE(help().startsWith(u"A check at home"_s)) << help().toStdString();
    // Another terminal was faster.
    s.morvane->Execute("delete * from TareasAgenda");
    ask.wait(s(text::DelayTasksQuestion));
    click(u"cmdPasarTarea"_s);
    EXPECT_EQ(help(), s(text::TaskIsGone));
    EXPECT_EQ(list()->gridModel()->allRows(), 0);
}

TEST_F(Agenda, ACommonUserMarksTasksButMovesNone)
{
    s.user.ut = 1;
    task(control, 1, hoy, {9, 0}, {}, {9, 0});
    open();
    press(list(), Qt::Key_Space);
    EXPECT_EQ(tasks("est"), u"-1\n"_s);
    EXPECT_TRUE(s.Alarmas[0].attended);
    EXPECT_EQ(list()->gridModel()->cellText(0, 3), s(text::Accomplished));
    for (int i = 0; i < 5; ++i)
        ask.wait(s(text::FeatureNotAvailable));
    click(u"cmdPasarTarea"_s);
    click(u"cmdEliminar"_s);
    press(list(), Qt::Key_Down, Qt::AltModifier);
    press(hours(), Qt::Key_Right, Qt::AltModifier);
    drag(1, hoy, {11, 0});
    EXPECT_EQ(moved(), u"1|2026-03-11|09:00:00\n"_s);
}

TEST_F(Agenda, AltAndArrowsMoveATaskAndControlZTakesItBack)
{
    task(control, 1, hoy, {9, 5});
    task(control, 2, hoy, {});
    open();
    press(list(), Qt::Key_Down);
    press(list(), Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(moved(), u"1|2026-03-11|09:20:00\n2|2026-03-11|\n"_s);
    press(hours(), Qt::Key_Right, Qt::AltModifier);
    EXPECT_EQ(day(), hoy.addDays(1)) << "the eye follows";
    EXPECT_EQ(details(), u"09:20 A check"_s);
    EXPECT_TRUE(help().contains(s(text::UndoHint)));
    press(list(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(moved(), u"1|2026-03-11|09:20:00\n2|2026-03-11|\n"_s);
    EXPECT_EQ(day(), hoy);
    // A task without an hour can change its day but not its hour.
    press(list(), Qt::Key_Home);
    press(list(), Qt::Key_Up, Qt::AltModifier);
    press(list(), Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(moved(), u"1|2026-03-11|09:20:00\n2|2026-03-10|\n"_s);
    // All selected tasks move and stay selected; if one would leave the day, none moves.
    s.morvane->Execute("update TareasAgenda set dia = ?", hoy);
    const int late = task(visit, 2, hoy, {23, 30});
    press(list(), Qt::Key_Home, Qt::ControlModifier);
    press(list(), Qt::Key_Home);
    press(list(), Qt::Key_End, Qt::ShiftModifier);
    for (int i = 0; i < 3; ++i)
        press(list(), Qt::Key_Down, Qt::AltModifier);
    press(list(), Qt::Key_Right, Qt::AltModifier);
    EXPECT_EQ(moved(), u"1|2026-03-12|09:35:00\n2|2026-03-12|\n3|2026-03-12|23:45:00\n"_s);
    EXPECT_EQ(list()->selectedRows().size(), 3);
    press(list(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(moved(), u"1|2026-03-11|09:35:00\n2|2026-03-11|\n3|2026-03-11|23:45:00\n"_s);
    // Another terminal was faster.
    press(list(), Qt::Key_Home);
    press(list(), Qt::Key_End);
    s.morvane->Execute("delete * from TareasAgenda where id = ?", late);
    press(list(), Qt::Key_Right, Qt::AltModifier);
    EXPECT_EQ(help(), s(text::TaskIsGone));
    EXPECT_EQ(list()->gridModel()->allRows(), 2);
}

TEST_F(Agenda, AHandMovesATaskByQuartersAndEscapeLeavesItWhereItWas)
{
    task(control, 1, hoy, {9, 5});
    open();
    drag(1, hoy, {11, 0});
    EXPECT_EQ(moved(), u"1|2026-03-11|11:00:00\n"_s);
    drag(1, hoy, {8, 30}, false);
    press(hours(), Qt::Key_Escape);
    QTest::mouseRelease(hours()->viewport(), Qt::LeftButton, {}, hours()->pointOf(hoy, {8, 30}));
    EXPECT_EQ(moved(), u"1|2026-03-11|11:00:00\n"_s);
    EXPECT_TRUE(form->isVisible()) << "it ended the drag, not the form";
    // Dragged around and dropped where it was, it does not even snap to a quarter of an hour.
    s.morvane->Execute("update TareasAgenda set hor = ? where id = 1", QTime(11, 5));
    press(list(), Qt::Key_F5);
    drag(1, hoy, {9, 0}, false);
    QTest::mouseRelease(hours()->viewport(), Qt::LeftButton, {},
                        hours()->placeOf(1).topLeft() + QPoint(60, 6));
    EXPECT_EQ(moved(), u"1|2026-03-11|11:05:00\n"_s);

    click(u"cmdSemana"_s);
    drag(1, hoy.addDays(2), {9, 45});
    EXPECT_EQ(moved(), u"1|2026-03-13|09:45:00\n"_s);
    EXPECT_EQ(day(), hoy.addDays(2));
    EXPECT_EQ(list()->currentRow(), 0);
    press(list(), Qt::Key_Home, Qt::ControlModifier); // lists a day other than the task's
    drag(1, hoy.addDays(1), {10, 15});
    EXPECT_EQ(moved(), u"1|2026-03-12|10:15:00\n"_s) << "at the first try";
    // Tasks without an hour are above the hours, all visible, until they get one.
    s.morvane->Execute("update TareasAgenda set hor = null where id = 1");
    for (int i = 0; i < 4; ++i)
        task(visit, 2, hoy.addDays(1), {});
    press(list(), Qt::Key_F5);
    for (int id = 1; id <= 5; ++id) {
        QTest::mouseClick(hours()->viewport(), Qt::LeftButton, {}, hours()->placeOf(id).center());
        EXPECT_EQ(hours()->chosenOne(), id);
    }
    drag(5, {hours()->pointOf(hoy, {9, 0}).x(), hours()->placeOf(5).center().y()});
    drag(1, hoy.addDays(2), {11, 30});
    EXPECT_EQ(tasks("id, dia, hor"), u"1|2026-03-13|11:30:00\n2|2026-03-12|\n3|2026-03-12|\n"
                                     u"4|2026-03-12|\n5|2026-03-11|\n"_s);
    press(hours(), Qt::Key_Escape);
    EXPECT_FALSE(form && form->isVisible());
}

TEST_F(Agenda, TheHoursAreWalkedByKeysAndAFreeOneIsBooked)
{
    task(control, 1, hoy, {9, 40}, u"first"_s); // until 10:25
    task(visit, 2, hoy, {10, 0}, u"second"_s);
    task(surgery, 2, hoy.addDays(1), {8, 0});
    open();
    hours()->setFocus();
    EXPECT_EQ(hours()->chosenOne(), 1) << "the list's first";
    press(hours(), Qt::Key_Down, Qt::ControlModifier);
    EXPECT_EQ(hours()->chosenOne(), 2);
    EXPECT_EQ(list()->currentRow(), 1);
    EXPECT_TRUE(hours()->accessibleDescription().contains(u"Mia"_s));
    press(hours(), Qt::Key_Down); // 10:30
    EXPECT_EQ(hours()->chosenOne(), 0);
    EXPECT_EQ(list()->currentRow(), -1);
    EXPECT_TRUE(hours()->accessibleDescription().contains(u"10:30"_s));
    for (const Qt::Key key : {Qt::Key_Insert, Qt::Key_Return}) {
        expectBooking();
        press(hours(), key);
    }
    press(hours(), Qt::Key_Right); // past the day shown
    EXPECT_EQ(day(), hoy.addDays(1));
    EXPECT_EQ(hours()->cursorHour(), QTime(10, 30));
    press(hours(), Qt::Key_Home);
    EXPECT_EQ(hours()->chosenOne(), 3);
    press(hours(), Qt::Key_Return); // opens its patient
    EXPECT_EQ(s.IdGlobal.idm, 2);
    EXPECT_EQ(static_cast<Registry *>(forms.load(u"frmPropietarios"_s))->times, 1);

    // The same with the mouse; the new task is selected.
    expectBooking(true);
    const QPoint eleven = hours()->pointOf(hoy.addDays(1), {11, 0}) + QPoint(0, 4);
    QTest::mouseClick(hours()->viewport(), Qt::LeftButton, {}, eleven);
    QTest::mouseDClick(hours()->viewport(), Qt::LeftButton, {}, eleven);
    EXPECT_EQ(asked, QStringList({u"2026-03-11 "_s + longHour({10, 30}) + u" Toby"_s,
                                  u"2026-03-11 "_s + longHour({10, 30}) + u" Toby"_s,
                                  u"2026-03-12 "_s + longHour({11, 0}) + u" Mia"_s}));
    EXPECT_EQ(details(), u"08:00 A surgery, 11:00 A check"_s);
    EXPECT_EQ(list()->currentRow(), 1);
}

TEST_F(Agenda, ANarrowBlockTellsWholeLettersOrNothing)
{
    const QFontMetrics letters{QFont()};
    const auto in = [&](const QString &width) {
        return whatFits(letters, u"Wolfgang"_s, letters.horizontalAdvance(width) + 1);
    };
    EXPECT_EQ(in(u"Wolfgang"_s), u"Wolfgang"_s);
    EXPECT_EQ(in(u"Wolf…"_s), u"Wolf…"_s);
    EXPECT_EQ(in(u"Wo…"_s), QString());
    EXPECT_EQ(whatFits(letters, u"Al"_s, letters.horizontalAdvance(u"Al"_s) + 1), u"Al"_s);
}

TEST_F(Agenda, TheDayAndATaskGoIntoACalendarFile)
{
    task(control, 1, hoy, {9, 0});
    task(visit, 2, hoy, {10, 0});
    task(visit, 2, hoy.addDays(1), {10, 0});
    open();
    click(u"cmdSemana"_s);
    const auto events = [](const QString &file) {
        QFile f(file);
        EXPECT_TRUE(f.open(QIODevice::ReadOnly));
        return f.readAll().count("BEGIN:VEVENT");
    };
    auto *menu = the<QPushButton>(u"cmdCalendario"_s)->menu();
    ask.expectText(s(text::SaveDay), folder.path() + u"/day"_s);
    menu->findChild<QAction *>(u"menuDia"_s)->trigger();
    EXPECT_EQ(events(folder.path() + u"/day.ics"_s), 2) << "the day, not the week";
    EXPECT_TRUE(help().startsWith(s(text::CalendarSaved)));
    ask.expectText(s(text::SaveTask), folder.path() + u"/one.ics"_s);
    menu->findChild<QAction *>(u"menuTarea"_s)->trigger();
    EXPECT_EQ(events(folder.path() + u"/one.ics"_s), 1);
    ask.expectText(s(text::SaveDay), std::nullopt);
    menu->findChild<QAction *>(u"menuDia"_s)->trigger();
    ask.expectText(s(text::SaveDay), folder.path() + u"/none/day.ics"_s);
    ask.wait({}); // why it could not be written
    menu->findChild<QAction *>(u"menuDia"_s)->trigger();
}

TEST_F(Agenda, PrintsTodaysSheetWhateverDayIsShown)
{
    open({{u"dia"_s, hoy.addDays(3)}});
    press(list(), Qt::Key_P, Qt::ControlModifier);
    ASSERT_EQ(impresion.printed.size(), 1);
    EXPECT_TRUE(impresion.printed[0].contains(QLocale().toString(hoy, QLocale::LongFormat)));
}
