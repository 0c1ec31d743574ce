#include "startup/first_run.h"
#include "startup/frminicio.h"
#include "startup/frmregistroinicial.h"
#include "startup/start_steps.h"
#include "support/clinic.h"
#include "texts/texts.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>
#include <QTimer>

using namespace startup;
using namespace Qt::StringLiterals;

namespace
{

class Splash : public Clinic
{
protected:
    Splash()
    {
        s.user = {};
        const auto note = [this](const QString &what) { return [this, what] { log << what; }; };
        steps.openStore = note(u"open"_s);
        steps.loadBoard = note(u"board"_s);
        steps.startTasks = [this] { log << u"tasks for "_s + s.user.nom; };
        steps.loadOwners = note(u"owners"_s);
        steps.loadSales = note(u"sales"_s);
        steps.showBoard = note(u"show"_s);
        steps.finish = note(u"end"_s);
    }
    void firstRunDone(const QString &user, const QString &password)
    {
        beginFirstRun(s);
        registerFirstRun(s, {u"El Ombú"_s, {}, {}, user, password, password});
        finishFirstRun(s);
    }
    /// Starts, and waits until the log is complete or the login appears.
    void start()
    {
        splash = std::make_unique<frminicio>(s, steps);
        splash->show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(splash.get()));
        EXPECT_TRUE(QTest::qWaitFor([this] { return over() || box(u"txtusr"_s)->isVisible(); }));
    }
    bool over() { return log.contains(u"show"_s) || log.contains(u"end"_s); }
    void waitTillOver()
    {
        EXPECT_TRUE(QTest::qWaitFor([this] { return over(); }));
    }
    QLineEdit *box(const QString &name) { return splash->findChild<QLineEdit *>(name); }
    QString stage() { return splash->findChild<QLabel *>(u"lblinicio"_s)->text(); }
    void type(const QString &text)
    {
        QTest::keyClicks(splash->focusWidget(), text);
        QTest::keyClick(splash->focusWidget(), Qt::Key_Return);
    }

    QStringList log;
    StartSteps steps;
    std::unique_ptr<frminicio> splash;
};

/// Calls @p play once a form of this type is open.
template <typename Form>
void whenOpen(const std::function<void(Form &)> &play)
{
    QTimer::singleShot(50, qApp, [play] {
        auto *form = qobject_cast<Form *>(QApplication::activeModalWidget());
        if (!form)
            return whenOpen<Form>(play);
        ASSERT_TRUE(QTest::qWaitForWindowActive(form));
        play(*form);
    });
}

} // namespace

TEST_F(Splash, ASoleUserWithoutPasswordGoesStraightToTheBoard)
{
    firstRunDone(u"Ana"_s, {});
    start();
    EXPECT_EQ(log, QStringList({u"open"_s, u"board"_s, u"tasks for Ana"_s, u"owners"_s, u"sales"_s,
                                u"show"_s}));
    EXPECT_FALSE(splash->isVisible());
}

TEST_F(Splash, TheLoginIsWorkedByKeys)
{
    firstRunDone(u"Ana"_s, u"Secret"_s);
    start();
    EXPECT_EQ(splash->focusWidget(), box(u"txtusr"_s));
    type(u"Eva"_s);
    EXPECT_EQ(stage(), s(text::UserDoesNotExist));
    EXPECT_EQ(box(u"txtusr"_s)->selectedText(), u"Eva"_s) << "ready to be typed again";
    type(u"ana"_s);
    EXPECT_EQ(stage(), s(text::LoginWelcome) + u" Ana."_s);
    EXPECT_EQ(splash->focusWidget(), box(u"txtpas"_s));
    type(u"secret"_s);
    EXPECT_EQ(stage(), s(text::InvalidPassword));
    EXPECT_FALSE(over());
    type(u"Secret"_s);
    EXPECT_FALSE(box(u"txtusr"_s)->isVisible());
    waitTillOver();
    EXPECT_EQ(log.mid(2, 1), QStringList{u"tasks for Ana"_s});
}

TEST_F(Splash, TheFifthEnterAndEscapeEndTheProgram)
{
    firstRunDone(u"Ana"_s, u"Secret"_s);
    start();
    type(u"ana"_s);
    for (int i = 0; i < 4; ++i)
        type(u"wrong"_s);
    EXPECT_FALSE(over());
    type(u"Secret"_s);
    EXPECT_EQ(log, QStringList({u"open"_s, u"board"_s, u"end"_s}));

    log.clear();
    start();
    QTest::keyClick(splash->focusWidget(), Qt::Key_Escape);
    EXPECT_EQ(log, QStringList({u"open"_s, u"board"_s, u"end"_s}));
}

TEST_F(Splash, ASecondInstanceSaysSoAndOpensNothing)
{
    steps.otherInstance = [] { return true; };
    ask.wait(s(text::KelvaraIsRunning));
    start();
    EXPECT_EQ(log, QStringList{u"end"_s});
}

TEST_F(Splash, ShowsHowFarThePassHasComeAndCannotBeClosedMeanwhile)
{
    firstRunDone(u"Ana"_s, {});
    steps.startTasks = [this] {
        s.progress.tellStage(u"Food"_s);
        s.progress.tellBar(3, 19);
        EXPECT_EQ(stage(), u"Food"_s);
        EXPECT_EQ(splash->findChild<QProgressBar *>(u"barra"_s)->value(), 3);
        splash->close();
        EXPECT_TRUE(splash->isVisible());
    };
    start();
    EXPECT_EQ(log.last(), u"show"_s);
    s.progress.tellBar(1, 1); // the form is no longer connected
}

TEST_F(Splash, APassThatFailsIsToldAndTheBoardStillOpens)
{
    firstRunDone(u"Ana"_s, {});
    steps.startTasks = [] {
        throw store::StoreError(store::ErrorNumber::FullDisk, u"disk full"_s);
    };
    ask.wait(u"The disk is full."_s);
    start();
    EXPECT_EQ(log.last(), u"show"_s);
}

TEST_F(Splash, TheFirstRunIsFilledInByKeys)
{
    whenOpen<frmRegistroInicial>([this](frmRegistroInicial &form) {
        const auto fill = [&form](const QString &text) {
            QTest::keyClicks(form.focusWidget(), text);
            QTest::keyClick(form.focusWidget(), Qt::Key_Return);
        };
        const auto fault = [&form] { return form.findChild<QLabel *>(u"lblAviso"_s)->text(); };
        for (const auto &text : {u"El Ombu"_s, u"Mitre 1"_s, u"555"_s, u""_s, u"one"_s, u"two"_s})
            fill(text);
        EXPECT_EQ(form.focusWidget()->objectName(), u"cmdContinuar"_s);
        fill({});
        EXPECT_EQ(fault(), s(text::PleaseEnterName));
        EXPECT_EQ(form.focusWidget()->objectName(), u"txtNombreUsuario"_s);
        fill(u"Ana"_s);
        EXPECT_TRUE(fault().isEmpty());
        form.findChild<QPushButton *>(u"cmdContinuar"_s)->click();
        EXPECT_EQ(fault(), s(text::PasswordsDoNotMatch));
        EXPECT_EQ(form.focusWidget()->objectName(), u"txtContraseñaUsuario"_s);
        EXPECT_EQ(s.morvane->read("select count(*) from veterinaria").toInt(), 0);
        fill(u"two"_s);
        form.findChild<QPushButton *>(u"cmdContinuar"_s)->click();
    });
    ask.wait(s(text::RememberPasswordAdvice));
    start();
    EXPECT_EQ(allRows(*s.morvane, "select nom, pro, dir, tel from veterinaria"),
              u"El Ombu|Ana|Mitre 1|555\n"_s);
    EXPECT_EQ(allRows(*s.morvane, "select nom, up, ut from usuarios"), u"Ana|two|2\n"_s);
    EXPECT_FALSE(isFirstRun(s));
}

TEST_F(Splash, AFirstRunThatIsLeftEndsTheProgramAndComesAgain)
{
    whenOpen<frmRegistroInicial>([this](frmRegistroInicial &form) {
        ask.wait(s(text::LeaveFirstRunQuestion), false);
        form.close();
        EXPECT_TRUE(form.isVisible());
        ask.wait(s(text::LeaveFirstRunQuestion), true);
        form.close();
    });
    start();
    EXPECT_EQ(log, QStringList({u"open"_s, u"end"_s}));
    EXPECT_TRUE(isFirstRun(s));
}
