#include "board/board_view.h"
#include "board/frmacerca.h"
#include "board/frmprincipal.h"
#include "columns/configuracion.h"
#include "store/lookups.h"
#include "support/clinic.h"
#include "texts/board.h"
#include "texts/texts.h"
#include "ui/form_registry.h"
#include "ui/grid.h"
#include "ui/window_dialogs.h"

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QTest>
#include <QTimer>

using namespace board;
using namespace Qt::StringLiterals;

namespace
{

/// Records its parameters and shows nothing.
struct Screen : ui::FormBase {
    Screen(Sesion &s, const QString &name, QStringList &log) : ui::FormBase(s, name), m_log(log) {}
    void opened(const QVariantMap &parameters) override
    {
        QString text = objectName();
        for (auto i = parameters.begin(); i != parameters.end(); ++i)
            text += u' ' + i.key() + u'=' + i.value().toString();
        m_log << text;
    }
    void setVisible(bool) override {}
    QStringList &m_log;
};

class Board : public Clinic
{
protected:
    Board()
    {
        s.morvane->Execute("delete * from pizarra");
        addClient();
        for (const auto &name : {u"frmPropietarios"_s, u"FrmFinanzas"_s, u"frmAnalisis"_s,
                                 u"frmlistados"_s, u"frmagenda"_s, u"frmmensajeria"_s})
            forms.enrol(name, [this, name] { return new Screen(s, name, log); });
    }
    void show()
    {
        board = std::make_unique<frmprincipal>(s, forms,
                                               Desk{[this](const QUrl &link) {
                                                        log << link.toString();
                                                        return true;
                                                    },
                                                    [this] { log << u"beep"_s; },
                                                    [this] { log << u"end"_s; }});
        board->CargarPizarra();
        board->showBoard();
        ASSERT_TRUE(QTest::qWaitForWindowActive(board.get()));
    }
    void addClient() { s.clientes->Execute("insert into clientes (idc, ayn) values (1, 'Abad')"); }
    QTableView *grid() { return board->findChild<QTableView *>(u"GPizarra"_s); }
    QString cell(int row)
    {
        return grid()->model()->index(row, BoardModel::Message).data().toString();
    }
    void key(Qt::Key k, Qt::KeyboardModifiers m = {}) { QTest::keyClick(grid(), k, m); }
    void tick()
    {
        QMetaObject::invokeMethod(board->findChild<QTimer *>(u"TimerHora"_s), "timeout");
    }
    QStringList taken() { return std::exchange(log, {}); }

    QStringList log;
    ui::FormRegistry forms;
    std::unique_ptr<frmprincipal> board;
};

} // namespace

TEST_F(Board, ANewClinicIsLedThroughItsFirstSteps)
{
    forms.enrol(u"frmConfiguracion"_s,
                [this] { return new Screen(s, u"frmConfiguracion"_s, log); });
    s.clientes->Execute("delete * from clientes");
    AgregarPizarra(s, u"welcome"_s, 106, 0, 38);
    show();
    EXPECT_EQ(cell(6), u"welcome"_s) << "below the steps";
    s.morvane->Execute("delete * from pizarra");
    board->CargarPizarra();
    const QString done = u" · "_s + s(text::StepDone);
    EXPECT_EQ(cell(1), s(text::StepClinicData));
    EXPECT_EQ(cell(2), s(text::StepUsers));
    EXPECT_EQ(cell(6), s(text::NoReportsToday));
    key(Qt::Key_Return);
    EXPECT_EQ(taken(), QStringList{u"frmConfiguracion pagina=clinica"_s});

    s.clinic.dir = u"Mitre 1"_s;
    addClient();
    board->CargarPizarra();
    EXPECT_EQ(cell(1), s(text::StepClinicData) + done);
    EXPECT_EQ(cell(2), s(text::StepUsers));
    EXPECT_EQ(cell(3) + u'|' + cell(4),
              s(text::StepClients) + done + u'|' + s(text::StepImport) + done);
    AgregarPizarra(s, u"a line"_s, 102, 1, 20);
    board->CargarPizarra();
    EXPECT_EQ(cell(1), u"a line"_s) << "the steps are for an empty board";
}

TEST_F(Board, APassThatDidNotRunAndFailuresStandBeforeTheLines)
{
    registerBoardForms(s, forms);
    AgregarPizarra(s, u"of yesterday"_s, 102, 1, 20);
    s.configuracion.Edit();
    s.configuracion.Put(setting::FechaUltimoInicio, hoy.addDays(-1));
    s.configuracion.Update();
    show();
    EXPECT_EQ(cell(1), s(text::PassDidNotRun).arg(store::dayText(hoy.addDays(-1))));
    EXPECT_EQ(cell(2), u"of yesterday"_s);

    store::logError(s, 3022, u"first"_s, u"here"_s);
    s.configuracion.Edit();
    s.configuracion.Put(setting::FechaUltimoInicio, hoy);
    s.configuracion.Update();
    board->CargarPizarra();
    EXPECT_EQ(cell(1), s(text::OneFailureNoted).arg(store::dayText(hoy)));
    store::logError(s, 3022, u"second"_s, u"there"_s);
    board->CargarPizarra();
    EXPECT_EQ(cell(1), s(text::FailuresNoted).arg(2).arg(store::dayText(hoy)));

    const auto look = [&](bool clear) {
        QTimer::singleShot(0, qApp, [&, clear] {
            auto *list = QApplication::activeModalWidget();
            ASSERT_TRUE(list);
            auto *rows = list->findChild<ui::Grid *>(u"grd"_s)->gridModel();
            EXPECT_EQ(rows->cellText(0, 3) + u'|' + rows->cellText(1, 3), u"second|first"_s);
            ask.wait(s(text::ClearFailuresQuestion).arg(2), clear);
            list->findChild<QPushButton *>(u"cmdBorrar"_s)->click();
            EXPECT_EQ(rows->allRows(), clear ? 0 : 2);
            list->close();
        });
        key(Qt::Key_Return);
        board->CargarPizarra();
    };
    look(false);
    EXPECT_EQ(cell(1), s(text::FailuresNoted).arg(2).arg(store::dayText(hoy)));
    look(true);
    EXPECT_EQ(cell(1), u"of yesterday"_s);

    AgregarPizarra(s, u"below"_s, 102, 1, 20);
    board->CargarPizarra();
    key(Qt::Key_Down);
    board->CargarPizarra();
    EXPECT_EQ(grid()->currentIndex().row(), 2) << "reading again leaves the cursor where it is";
}

TEST_F(Board, WithoutLinesItSaysSoUntilF5ReadsWhatOthersHaveWritten)
{
    s.clinic.dir = u"Mitre 1"_s;
    for (const int idu : {7, 8})
        s.morvane->Execute("insert into Usuarios (idu, nom) values (?, 'Eva')", idu);
    s.configuracion.Edit();
    s.configuracion.Put(setting::usuariomail, u"eva"_s);
    s.configuracion.Update();
    show();
    EXPECT_EQ(cell(0),
              s(text::DaySummary) + u"\t "_s + QLocale().toString(hoy, QLocale::LongFormat) + u'.');
    EXPECT_EQ(cell(1), s(text::NoReportsToday));
    EXPECT_EQ(grid()->model()->rowCount(), 2);
    key(Qt::Key_Return);
    EXPECT_TRUE(taken().isEmpty());
    AgregarPizarra(s, u"news"_s, 106, 0, 0);
    key(Qt::Key_F5);
    EXPECT_EQ(cell(1), u"news"_s);
}

TEST_F(Board, TheModelKeepsItsContract)
{
    AgregarPizarra(s, u"a line"_s, 102, 1, 20);
    BoardModel model(
        s, [](const Target &) { return true; }, nullptr);
    const QAbstractItemModelTester tester(&model,
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    model.load();
    EXPECT_EQ(model.rowCount(), 2);
    EXPECT_FALSE(model.flags(model.index(0, 1)) & Qt::ItemIsSelectable);
}

TEST_F(Board, ALineIsWorkedFromTheKeyboard)
{
    AgregarPizarra(s, u"doses"_s, 102, 3, 5);
    AgregarPizarra(s, u"help"_s, 106, 38, 0);
    AgregarPizarra(s, u"nothing behind"_s, 106, 0, 0);
    AgregarPizarra(s, u"yesterday"_s, 115, 32, 0);
    show();
    key(Qt::Key_Return);
    EXPECT_EQ(taken(), QStringList{u"frmlistados rapido=3"_s}) << "the first that the line has";
    key(Qt::Key_2);
    EXPECT_EQ(taken(), QStringList{u"frmmensajeria"_s});
    key(Qt::Key_Right);
    key(Qt::Key_Right);
    key(Qt::Key_Return);
    EXPECT_EQ(taken(), QStringList{u"frmmensajeria"_s}) << "the icon that was walked to";
    key(Qt::Key_Left);
    key(Qt::Key_Left);
    key(Qt::Key_Down);
    key(Qt::Key_Return);
    EXPECT_EQ(taken(), QStringList{store::helpPage(s)});
    key(Qt::Key_Down);
    key(Qt::Key_Return);
    key(Qt::Key_1);
    EXPECT_TRUE(taken().isEmpty());
    key(Qt::Key_Down);
    key(Qt::Key_1);
    EXPECT_EQ(taken(), QStringList{u"frmagenda dia=2026-03-10 modo=1"_s});
}

TEST_F(Board, AClickOpensWhatLiesUnderTheMouse)
{
    AgregarPizarra(s, u"folder: /tmp/copies"_s, 114, 37, 0);
    AgregarPizarra(s, u"doses"_s, 102, 3, 20);
    show();
    const auto click = [this](int row, int column) {
        const QRect place = grid()->visualRect(grid()->model()->index(row, column));
        QTest::mouseClick(grid()->viewport(), Qt::LeftButton, {}, place.center());
    };
    click(1, BoardModel::Icon1); // the code belongs to the text
    click(0, BoardModel::Message);
    click(2, BoardModel::Message);
    EXPECT_TRUE(taken().isEmpty());
    click(1, BoardModel::Message);
    click(2, BoardModel::Icon1);
    click(2, BoardModel::Icon2); // this test has no such form
    EXPECT_EQ(taken(), QStringList({u"file:///tmp/copies"_s, u"frmlistados rapido=3"_s}));
}

TEST_F(Board, AltAndADigitPressTheButtonsThatLeadSomewhere)
{
    show();
    for (const Qt::Key digit : {Qt::Key_1, Qt::Key_2, Qt::Key_6, Qt::Key_8})
        key(digit, Qt::AltModifier);
    EXPECT_EQ(taken(), QStringList({u"frmPropietarios"_s, u"FrmFinanzas"_s, u"frmagenda"_s}));
    EXPECT_FALSE(board->findChild<QPushButton *>(u"cmdMorvane"_s)->isEnabled());
    for (const BoardButton &b : boardButtons())
        EXPECT_FALSE(
            board->findChild<QPushButton *>(b.name.toString())->accessibleName().isEmpty());
}

TEST_F(Board, ACommonUserIsRefusedAnalysis)
{
    s.user.ut = 1;
    show();
    ask.wait(s(text::FeatureNotAvailable));
    key(Qt::Key_3, Qt::AltModifier);
    EXPECT_TRUE(taken().isEmpty());
    s.user.ut = 2;
    key(Qt::Key_3, Qt::AltModifier);
    EXPECT_EQ(taken(), QStringList{u"frmAnalisis"_s});
}

TEST_F(Board, OnlyClosingItEndsTheProgram)
{
    show();
    key(Qt::Key_Escape);
    EXPECT_TRUE(taken().isEmpty());
    key(Qt::Key_0, Qt::AltModifier);
    EXPECT_EQ(taken(), QStringList{u"end"_s});
}

TEST_F(Board, TheClockRingsAndMidnightEndsTheProgram)
{
    show();
    s.Alarmas = {{.hour = QTime(9, 1), .tip = -47, .attended = false, .ida = {}}};
    ask.wait(u"Agenda: "_s + s(text::AccommodationAndFood));
    tick();
    tick();
    EXPECT_EQ(taken(), QStringList{u"beep"_s});

    s.reloj.now = [this] { return QDateTime(hoy.addDays(1), QTime(0, 0)); };
    ask.wait(s(text::DayHasChanged));
    tick();
    EXPECT_EQ(taken(), QStringList{u"end"_s});
}

TEST_F(Board, WhatSomebodyIsTypingDoesNotAnswerAnAlarm)
{
    ui::WindowDialogs windows{store::Texts(store::Language::English)};
    Sesion real(windows, impresion, store::Language::English);
    real.reloj = s.reloj;
    real.Alarmas = {{.hour = QTime(9, 1), .tip = -47, .attended = false, .ida = {}}};
    qint64 clock = 0;
    const frmprincipal ringer(real, forms,
                              {[](const QUrl &) { return true; }, [] {},
                               [this] { log << u"end"_s; }, [&clock] { return clock; }});
    QLineEdit page;
    page.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&page));
    bool waited = false, answered = false;
    QTimer::singleShot(0, qApp, [&] {
        const QPointer<QWidget> box = QApplication::activeModalWidget();
        ASSERT_TRUE(box);
        QWidget *button = box->findChild<QPushButton *>(u"cmdAceptar"_s);
        QTest::keyClicks(button, u"ok "_s);
        QTest::keyClick(button, Qt::Key_O, Qt::AltModifier); // its letter
        for (const Qt::Key k : {Qt::Key_Return, Qt::Key_Escape, Qt::Key_Space})
            QTest::keyClick(button, k);
        clock += 999;
        QTest::keyClicks(button, u"o"_s); // not yet a pause
        clock += 999;
        QTest::keyClick(button, Qt::Key_Backspace);
        waited = box && box->isVisible();
        clock += 1000;
        QTest::keyClick(button, Qt::Key_Return);
        answered = !box || !box->isVisible();
        if (!answered)
            box->close();
    });
    QMetaObject::invokeMethod(ringer.findChild<QTimer *>(u"TimerHora"_s), "timeout");
    EXPECT_TRUE(waited);
    EXPECT_TRUE(answered) << "after a second without a key";
    EXPECT_EQ(page.text(), u"ok  "_s) << "what was typed went on where it began";

    // The mouse works at once, and so does the keyboard after the pause.
    real.Alarmas[0].attended = false;
    QTimer::singleShot(0, qApp, [&] {
        QWidget *box = QApplication::activeModalWidget();
        QTest::mouseClick(box->findChild<QWidget *>(u"cmdAceptar"_s), Qt::LeftButton);
        EXPECT_FALSE(box->isVisible());
    });
    QMetaObject::invokeMethod(ringer.findChild<QTimer *>(u"TimerHora"_s), "timeout");
    QTest::keyClick(&page, Qt::Key_Home);
    EXPECT_EQ(page.cursorPosition(), 0);
}

TEST_F(Board, AboutSaysVersionAndFolder)
{
    frmAcerca about(s);
    EXPECT_EQ(about.findChild<QLabel *>(u"lblVersion"_s)->text(), u"5.5.4"_s);
    EXPECT_EQ(about.findChild<QLabel *>(u"lblCarpeta"_s)->text(), s.dataFolder);
}
