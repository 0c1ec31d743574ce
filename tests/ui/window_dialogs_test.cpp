#include "ui/window_dialogs.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTableView>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

using namespace ui;
using namespace Qt::StringLiterals;

namespace
{

/// Plays the user once a dialog is up. A dialog that is still open afterwards is cancelled, so that
/// an ignored key fails the test instead of hanging it.
void whenOpen(const std::function<void(QWidget &)> &play)
{
    QTimer::singleShot(0, qApp, [play] {
        QWidget *box = QApplication::activeModalWidget();
        ASSERT_NE(box, nullptr);
        ASSERT_TRUE(QTest::qWaitForWindowActive(box));
        EXPECT_TRUE(WindowDialogs::isOneOpen());
        QTimer::singleShot(2000, box, [box] {
            ADD_FAILURE() << "the box stayed open";
            box->close();
        });
        play(*box);
    });
}

void key(QWidget &box, Qt::Key k)
{
    QTest::keyClick(box.focusWidget() ? box.focusWidget() : &box, k);
}

void whenOpenPress(const QList<Qt::Key> &keys)
{
    whenOpen([keys](QWidget &box) {
        for (const Qt::Key k : keys)
            key(box, k);
    });
}

const QList<store::Option> three{
    {u"Luna\tCanino"_s, 7, false}, {u"Milo\tFelino"_s, 8, false}, {u"Rex\tCanino"_s, 9, false}};
const QStringList titles{u"Name"_s, u"Species"_s};

QList<int> values(const std::optional<QList<store::Option>> &chosen)
{
    QList<int> v;
    for (const store::Option &o : chosen.value())
        v << (o.marked ? o.value : -1);
    return v;
}

class Boxes : public testing::Test
{
protected:
    Boxes() { WindowDialogs::setPause(0); }
    WindowDialogs dialogs{store::Texts(store::Language::English)};
};

} // namespace

TEST_F(Boxes, AQuestionIsAnsweredByEnterEscapeOrTheFirstLetter)
{
    const std::initializer_list<std::pair<Qt::Key, bool>> cases = {
        {Qt::Key_Return, true}, {Qt::Key_Escape, false}, {Qt::Key_Y, true}, {Qt::Key_N, false}};
    for (const auto &[k, yes] : cases) {
        whenOpenPress({k});
        EXPECT_EQ(dialogs.Pregunta(u"Delete?"_s), yes) << k;
    }
    EXPECT_FALSE(WindowDialogs::isOneOpen());
}

TEST_F(Boxes, WhatCannotBeTakenBackStandsOnNoAndWhatLosesNothingComesFirst)
{
    for (const auto &[k, yes] : {std::pair(Qt::Key_Return, false), std::pair(Qt::Key_Escape, false),
                                 std::pair(Qt::Key_Y, true)}) {
        whenOpenPress({k});
        EXPECT_EQ(dialogs.askBeforeLoss(u"Delete?"_s), yes) << k;
    }
    for (const auto &[k, keep] : {std::pair(Qt::Key_Return, true), std::pair(Qt::Key_Escape, true),
                                  std::pair(Qt::Key_D, false)}) {
        whenOpenPress({k});
        EXPECT_EQ(dialogs.decide(u"Not saved."_s, u"Keep"_s, u"Discard"_s), keep) << k;
    }
    for (const auto &[name, answer] : {std::pair(u"cmdTodas"_s, store::Answer::All),
                                       std::pair(u"cmdNinguna"_s, store::Answer::None),
                                       std::pair(u"cmdAceptar"_s, store::Answer::Yes),
                                       std::pair(u"cmdCancelar"_s, store::Answer::No)}) {
        whenOpen([name = name](QWidget &box) { box.findChild<QPushButton *>(name)->click(); });
        EXPECT_EQ(dialogs.askOfSeries(u"Print?"_s), answer);
    }
}

TEST_F(Boxes, AKeyMeantForWhatLiesBehindAnswersNothing)
{
    WindowDialogs::setPause(60'000);
    bool stood = false;
    whenOpen([&stood](QWidget &box) {
        for (const Qt::Key k : {Qt::Key_Return, Qt::Key_Escape, Qt::Key_Y})
            key(box, k);
        stood = box.isVisible();
        WindowDialogs::setPause(0);
        key(box, Qt::Key_Y);
    });
    EXPECT_TRUE(dialogs.Pregunta(u"Delete?"_s));
    EXPECT_TRUE(stood);
}

TEST_F(Boxes, ANameWithMarkUpIsShownAsItIs)
{
    whenOpen([](QWidget &box) {
        auto *label = box.findChild<QLabel *>(u"lblTexto"_s);
        EXPECT_EQ(label->textFormat(), Qt::PlainText);
        EXPECT_EQ(label->text(), u"<img src=x><b>Rex</b>"_s);
        key(box, Qt::Key_Return);
    });
    dialogs.Mensaje(u"<img src=x><b>Rex</b>"_s);
}

TEST_F(Boxes, ATextLongerThanTheScreenScrolls)
{
    whenOpen([](QWidget &box) {
        EXPECT_NE(box.findChild<QPlainTextEdit *>(u"lblTexto"_s), nullptr);
        EXPECT_LT(box.height(), box.screen()->size().height());
        key(box, Qt::Key_Escape);
    });
    dialogs.Mensaje(u"one line of many\n"_s.repeated(500));
}

TEST_F(Boxes, ATextIsGivenOrWithheld)
{
    whenOpen([](QWidget &box) {
        QTest::keyClicks(box.focusWidget(), u"Ana"_s); // replaces the initial text
        key(box, Qt::Key_Return);
    });
    EXPECT_EQ(dialogs.PedirTexto(u"t"_s, u"Name"_s, u"old"_s), u"Ana"_s);
    whenOpenPress({Qt::Key_Escape});
    EXPECT_EQ(dialogs.PedirTexto(u"t"_s, u"Name"_s, u"old"_s), std::nullopt);
}

TEST_F(Boxes, APasswordIsTakenWithoutShowingIt)
{
    whenOpen([](QWidget &box) {
        auto *entry = box.findChild<QLineEdit *>(u"txtTexto"_s);
        QTest::keyClicks(entry, u"gato"_s);
        EXPECT_FALSE(entry->displayText().contains(u'g'));
        key(box, Qt::Key_Return);
    });
    EXPECT_EQ(dialogs.askPassword(u"t"_s, u"Password"_s), u"gato"_s);
}

TEST_F(Boxes, OneOptionIsPickedWithTheArrows)
{
    whenOpenPress({Qt::Key_Down, Qt::Key_Return});
    EXPECT_EQ(values(dialogs.Seleccionar(u"Patient"_s, titles, three)), QList<int>{8});

    QList<store::Option> marked = three;
    marked[2].marked = true;
    whenOpenPress({Qt::Key_Return});
    EXPECT_EQ(values(dialogs.Seleccionar(u"Patient"_s, titles, marked)), QList<int>{9})
        << "the list opens on the option that is marked";
}

TEST_F(Boxes, SeveralOptionsAreMarkedWithTheSpaceBar)
{
    QList<store::Option> marked = three;
    marked[2].marked = true;
    whenOpenPress({Qt::Key_Space, Qt::Key_Down, Qt::Key_Down, Qt::Key_Space, Qt::Key_Return});
    EXPECT_EQ(values(dialogs.Seleccionar(u"Patients"_s, titles, marked, true)), QList<int>{7});
    whenOpenPress({Qt::Key_Escape});
    EXPECT_FALSE(dialogs.Seleccionar(u"Patients"_s, titles, marked, true).has_value());
}

TEST_F(Boxes, ALongListIsNarrowedByTyping)
{
    QList<store::Option> many;
    for (int i = 0; i < 100; ++i)
        many << store::Option{u"Owner %1\tPatient %2"_s.arg(i).arg(1000 + i), i, false};
    whenOpen([](QWidget &box) {
        QTest::keyClicks(box.focusWidget(), u"1042"_s);
        EXPECT_EQ(box.findChild<QTableView *>(u"Grilla"_s)->model()->rowCount(), 1);
        key(box, Qt::Key_Return);
    });
    EXPECT_EQ(values(dialogs.Seleccionar(u"Owner"_s, titles, many)), QList<int>{42});
}

TEST_F(Boxes, AnEmptyListCanOnlyBeLeft)
{
    whenOpen([](QWidget &box) {
        key(box, Qt::Key_Return);
        EXPECT_TRUE(box.isVisible());
        key(box, Qt::Key_Escape);
    });
    EXPECT_FALSE(dialogs.Seleccionar(u"Owner"_s, titles, {}).has_value());
}
