#include "support/clinic.h"
#include "texts/ui.h"
#include "ui/boxes.h"
#include "ui/completion_list.h"
#include "ui/help_line.h"

#include <QApplication>
#include <QClipboard>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>
#include <QWheelEvent>

using namespace ui;
using namespace Qt::StringLiterals;

namespace
{

void paste(QLineEdit &box, const QString &text)
{
    QGuiApplication::clipboard()->setText(text);
    box.clear();
    box.paste();
}

class TypedBoxes : public Clinic
{
protected:
    TypedBoxes()
    {
        QLocale::setDefault({QLocale::Spanish, QLocale::Uruguay});
        s.separatorDecimal = u',';
    }
    ~TypedBoxes() override { QLocale::setDefault(QLocale::c()); }

    /// A window with the box and another one to go to.
    void open(QWidget &box)
    {
        auto *column = new QVBoxLayout(&window);
        column->addWidget(&box);
        column->addWidget(&other);
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
        box.setFocus();
    }
    void leave() { other.setFocus(Qt::TabFocusReason); }
    static void retype(QLineEdit &box, const QString &text)
    {
        box.setFocus();
        box.selectAll();
        QTest::keyClicks(&box, text);
    }

    QWidget window;
    QLineEdit other;
};

} // namespace

TEST_F(TypedBoxes, AWholeNumberTakesDigitsAlone)
{
    WholeNumberBox box(4);
    EXPECT_FALSE(box.whole());
    QTest::keyClicks(&box, u"-1a2.3'45"_s);
    EXPECT_EQ(box.text(), u"1234"_s);
    EXPECT_EQ(box.whole(), 1234);
    box.selectAll();
    QTest::keyClicks(&box, u"x"_s);
    EXPECT_EQ(box.text(), u"1234"_s) << "a wrong key must not erase what is selected";
    QTest::keyClick(&box, Qt::Key_Backspace);
    EXPECT_EQ(box.text(), QString());
    paste(box, u"12 34 56"_s);
    EXPECT_EQ(box.text(), u"1234"_s);
}

TEST_F(TypedBoxes, ANumberHasOneMarkWhicheverKeyTypedIt)
{
    NumberBox box(s);
    QTest::keyClicks(&box, u"12.5,x0"_s);
    EXPECT_EQ(box.text(), u"12,50"_s);
    EXPECT_EQ(box.numberOf(), Moneda::fromTenThousandths(125000));
    const std::initializer_list<std::pair<QString, QString>> pasted = {
        {u"$ 1.234,50"_s, u"1234,50"_s},
        {u"1,234.50"_s, u"1234,50"_s},
        {u"12.5"_s, u"12,5"_s},
        {u"1.234.567"_s, u"1234567"_s},
        {u"abc"_s, QString()}};
    for (const auto &[from, to] : pasted) {
        paste(box, from);
        EXPECT_EQ(box.text(), to) << from.toStdString();
    }
    EXPECT_FALSE(box.numberOf());
    box.setNumber(Moneda::fromTenThousandths(-2500));
    EXPECT_EQ(box.text(), u"-0,25"_s) << "what is stored is shown as it is";
}

TEST_F(TypedBoxes, DigitsFlowOverTheMaskOfADay)
{
    DateBox box(s);
    EXPECT_EQ(box.displayText(), u"__/__/____"_s);
    EXPECT_TRUE(box.empty() && box.valid());
    open(box);
    QTest::keyClicks(&box, u"29x022024"_s);
    EXPECT_EQ(box.Day(), QDate(2024, 2, 29));
    leave();
    EXPECT_EQ(box.displayText(), u"29/02/2024"_s);

    QLocale::setDefault({QLocale::English, QLocale::UnitedStates});
    EXPECT_FALSE(box.valid()) << "no month 29";
    box.setDay(QDate(2026, 3, 11));
    EXPECT_EQ(box.text(), u"03/11/2026"_s);
    EXPECT_EQ(box.Day(), QDate(2026, 3, 11));
    box.setDay({});
    EXPECT_TRUE(box.empty());
}

TEST_F(TypedBoxes, ABadDayIsToldOnLeavingAndTheMaskComesBack)
{
    DateBox box(s);
    open(box);
    for (const QString &bad :
         {u"31022024"_s, u"29022023"_s, u"110326"_s, u"1103"_s, u"11030026"_s}) {
        retype(box, bad);
        EXPECT_FALSE(box.valid()) << bad.toStdString();
        EXPECT_FALSE(box.Day().isValid());
        ask.wait(s(text::InvalidDate));
        leave();
        EXPECT_EQ(box.displayText(), u"__/__/____"_s);
    }
    box.setFocus();
    leave(); // an empty one is nothing to complain about
    EXPECT_EQ(store::Texts(store::Language::Spanish)(9300), u"Fecha invalida"_s);

    retype(box, u"99"_s);
    window.hide(); // closing the form is no moment for a message
}

TEST_F(TypedBoxes, ATimeIsWholeOrNothing)
{
    HourBox box;
    open(box);
    QTest::keyClicks(&box, u"0930"_s);
    EXPECT_EQ(box.hourOf(), QTime(9, 30));
    for (const QString &bad : {u"2460"_s, u"9"_s, u"095"_s}) {
        retype(box, bad);
        leave();
        EXPECT_EQ(box.displayText(), u"__:__"_s) << bad.toStdString();
    }
    retype(box, u"09"_s);
    QFocusEvent away(QEvent::FocusOut, Qt::ActiveWindowFocusReason);
    QApplication::sendEvent(&box, &away);
    EXPECT_EQ(box.displayText(), u"09:__"_s) << "another window is not leaving it";
}

TEST_F(TypedBoxes, AListProposesTheRestOfWhatIsTyped)
{
    ListWithCompleted list;
    open(list);
    list.load({{u"Montevideo"_s, 1}, {u"Montes"_s, 2}, {u"Salto"_s, 3}});
    EXPECT_EQ(list.Id(), 0) << "nothing is chosen by loading";
    QSignalSpy typed(&list, &ListWithCompleted::typed);
    QSignalSpy emptied(&list, &ListWithCompleted::emptied);
    QSignalSpy chosen(&list, &ListWithCompleted::chosen);
    const auto key = [&list](Qt::Key k) { QTest::keyClick(&list, k); };
    QObject::connect(&list, &ListWithCompleted::typed, &list, [&list](const QString &t) {
        if (QString(u"montevideo"_s).startsWith(t.toLower()))
            list.propose(1, u"Montevideo"_s);
    });

    QTest::keyClicks(&list, u"mon"_s);
    EXPECT_EQ(list.currentText(), u"Montevideo"_s);
    EXPECT_EQ(list.lineEdit()->selectedText(), u"tevideo"_s);
    EXPECT_EQ(list.Id(), 1);
    key(Qt::Key_Left);
    key(Qt::Key_Right);
    EXPECT_EQ(list.lineEdit()->selectedText(), u"tevideo"_s);
    EXPECT_EQ(typed.size(), 3);
    EXPECT_EQ(typed.last()[0], u"Mon"_s);

    QTest::keyClicks(&list, u"x"_s);
    EXPECT_EQ(list.currentText(), u"Monx"_s) << "the next key replaces what was proposed";
    EXPECT_EQ(list.Id(), 0);
    key(Qt::Key_Backspace);
    EXPECT_EQ(list.currentText(), u"Mon"_s) << "what is erased is not proposed again";
    EXPECT_EQ(typed.size(), 4);
    EXPECT_EQ(chosen.size(), 0);

    list.load({{u"Artigas"_s, 4}, {u"Montevideo"_s, 1}, {u"Salto"_s, 3}});
    EXPECT_EQ(list.currentText(), u"Mon"_s);
    list.SeleccionarItem(1);
    key(Qt::Key_Down);
    ASSERT_EQ(chosen.size(), 1);
    EXPECT_EQ(chosen[0][0], 3);
    EXPECT_EQ(list.currentText(), u"Salto"_s);
    list.lineEdit()->selectAll();
    key(Qt::Key_Delete);
    EXPECT_EQ(emptied.size(), 1);
    list.SeleccionarItem(77);
    EXPECT_EQ(list.currentText(), QString());

    list.SeleccionarItem(4);
    QWheelEvent wheel({2, 2}, list.mapToGlobal(QPointF(2, 2)), {}, {0, -120}, Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&list, &wheel);
    EXPECT_EQ(list.Id(), 4) << "the wheel is for the form";
    EXPECT_FALSE(wheel.isAccepted());
}

TEST_F(TypedBoxes, TheHelpLineKeepsTheWholeText)
{
    HelpLine line;
    line.resize(80, 20);
    const QString text = u"a text that is <much> too long for the line"_s;
    line.faultOf(text);
    EXPECT_EQ(line.text(), text);
    EXPECT_EQ(line.accessibleName(), text);
    EXPECT_TRUE(line.toolTip().contains(u"&lt;much&gt;"_s));
    EXPECT_LT(line.minimumSizeHint().width(), 80) << "it must not widen its form";
    line.clean();
    EXPECT_TRUE(line.text().isEmpty() && line.toolTip().isEmpty());
}
