#include "support/clinic.h"
#include "texts/ui.h"
#include "ui/boxes.h"
#include "ui/completion_list.h"
#include "ui/day_box.h"
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

    /// Shows the box in a window with a second one to move to.
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

TEST(TypedDay, IsReadAsPeopleTypeIt)
{
    const QDate today(2026, 3, 11); // a Wednesday
    const auto read = [today](const QString &text, store::Lean lean = store::Lean::Ahead) {
        return store::readDay(text, today, lean).toString(Qt::ISODate);
    };
    const std::pair<QString, QString> days[] = {
        {u"12/01/2026"_s, u"2026-01-12"_s}, {u"12-1-26"_s, u"2026-01-12"_s},
        {u"120126"_s, u"2026-01-12"_s},     {u"12012026"_s, u"2026-01-12"_s},
        {u"2026-01-12"_s, u"2026-01-12"_s}, {u" 15 . 4 "_s, u"2026-04-15"_s},
        {u"1504"_s, u"2026-04-15"_s},       {u"15"_s, u"2026-03-15"_s},
        {u"+7"_s, u"2026-03-18"_s},         {u"-1"_s, u"2026-03-10"_s},
        {u"+2w"_s, u"2026-03-25"_s},        {u"+1m"_s, u"2026-04-11"_s},
        {u"lunes"_s, u"2026-03-16"_s},      {u"Wednesday"_s, u"2026-03-18"_s},
        {u"sáb"_s, u"2026-03-14"_s},        {u"hoje"_s, u"2026-03-11"_s},
        {u"Mañana"_s, u"2026-03-12"_s},     {u"29/2"_s, u"2028-02-29"_s},
        {u"8/2"_s, u"2026-02-08"_s},        {u"8/3"_s, u"2026-03-08"_s},
        {u"7/2"_s, u"2027-02-07"_s},
    };
    for (const auto &[typed, day] : days)
        EXPECT_EQ(read(typed), day) << typed.toStdString();
    for (const QString &none : {u""_s, u"31/2"_s, u"12/13/2026"_s, u"1/1/1899"_s, u"1/1/2200"_s,
                                u"12/3/026"_s, u"123"_s, u"x"_s, u"1/2/3/4"_s, u"0"_s, u"32"_s})
        EXPECT_EQ(read(none), QString()) << none.toStdString();
    EXPECT_EQ(read(u"12/3"_s, store::Lean::Behind), u"2025-03-12"_s);
    EXPECT_EQ(read(u"12/3/27"_s, store::Lean::Behind), u"1927-03-12"_s);
    QLocale::setDefault({QLocale::English, QLocale::UnitedStates});
    EXPECT_EQ(read(u"4/15"_s), u"2026-04-15"_s);
    QLocale::setDefault(QLocale::c());
}

TEST_F(TypedBoxes, ADayIsTakenOnLeavingOrStaysAsTypedAndIsToldBesideTheBox)
{
    DayBox box(s, store::Lean::Behind, DayBox::Need::Optional);
    open(box);
    EXPECT_TRUE(box.isEmpty() && box.isAcceptable());
    QTest::keyClicks(&box, u"290224"_s);
    EXPECT_EQ(box.day(), QDate(2024, 2, 29));
    leave();
    EXPECT_EQ(box.text(), u"29/02/2024"_s);
    const auto note = [this] {
        const auto *label = window.findChild<QLabel *>(u"lblNotaDelCampo"_s);
        return label && label->isVisible() ? label->text() : QString();
    };
    for (const QString &bad : {u"31022024"_s, u"tomorrow"_s}) { // not born yet
        retype(box, bad);
        leave();
        EXPECT_EQ(box.text(), bad) << "nothing typed is lost";
        EXPECT_FALSE(box.isAcceptable() || box.day().isValid());
        EXPECT_TRUE(box.property("falla").toBool());
        EXPECT_NE(note(), QString());
    }
    box.setFocus();
    QTest::keyClick(&box, Qt::Key_Escape);
    EXPECT_EQ(box.day(), QDate(2024, 2, 29));
    EXPECT_FALSE(box.property("falla").toBool());
    EXPECT_EQ(note(), QString());
    QTest::keyClick(&box, Qt::Key_Up);
    EXPECT_EQ(box.day(), QDate(2024, 3, 1));
    box.setDay(s.reloj.hoy);
    QTest::keyClick(&box, Qt::Key_Up);
    EXPECT_EQ(box.day(), s.reloj.hoy) << "no further than it may go";
    retype(box, u""_s);
    leave();
    EXPECT_TRUE(box.isAcceptable());
    QTest::keyClick(&box, Qt::Key_F4);
    const QPointer<QWidget> month = box.findChild<QWidget *>(u"_calendario"_s);
    ASSERT_TRUE(month);
    month->close();
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
