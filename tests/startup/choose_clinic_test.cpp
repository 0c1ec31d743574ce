#include "startup/choose_clinic.h"

#include "startup/new_folder.h"
#include "store/data_folder.h"
#include "store/opening.h"
#include "support/clinic.h"
#include "texts/startup.h"

#include <QDir>
#include <QTemporaryDir>

using namespace startup;
using namespace Qt::StringLiterals;

namespace
{

/// A machine where the program has a folder and nothing else.
class NewMachine : public testing::Test
{
protected:
    NewMachine()
    {
        s.programFolder = s.dataFolder = folder.path() + u"/program/"_s;
        QDir().mkpath(s.programFolder);
        qputenv("KELVARA_HOME", s.programFolder.toUtf8());
    }
    ~NewMachine() override { qunsetenv("KELVARA_HOME"); }
    void pick(std::optional<QList<int>> rows) { ask.expectSelection(s(text::StartTitle), rows); }
    bool opens()
    {
        const auto failure = store::openStore(s);
        return !failure;
    }

    QTemporaryDir folder;
    TestDialogs ask;
    TestPrinting printing;
    Sesion s{ask, printing, store::Language::English};
};

} // namespace

TEST_F(NewMachine, GivingUpMakesNothing)
{
    ASSERT_TRUE(knowsNoClinic(s));
    pick(std::nullopt);
    EXPECT_FALSE(chooseClinic(s));
    EXPECT_TRUE(QDir(s.programFolder).isEmpty());
    s.givenFolder = true;
    EXPECT_FALSE(knowsNoClinic(s)) << "the command line names one";
}

TEST_F(NewMachine, AnOwnClinicIsMadeWhereTheProgramLooksForIt)
{
    pick(QList<int>{0});
    EXPECT_TRUE(chooseClinic(s));
    EXPECT_FALSE(knowsNoClinic(s));
    EXPECT_TRUE(opens());
}

TEST_F(NewMachine, ASharedFolderIsAskedForUntilItHoldsAClinic)
{
    const QString shared = folder.path() + u"/shared"_s;
    createFolder(shared, store::Language::English);
    pick(QList<int>{1});
    ask.expectText(s(text::SharedFolderPrompt), u" "_s);
    ask.wait(s(text::NoClinicInFolder));
    ask.expectText(s(text::SharedFolderPrompt), folder.path());
    ask.wait(s(text::NoClinicInFolder));
    ask.expectText(s(text::SharedFolderPrompt), std::nullopt); // back to the choice
    pick(QList<int>{1});
    ask.expectText(s(text::SharedFolderPrompt), shared);
    EXPECT_TRUE(chooseClinic(s));
    EXPECT_TRUE(s.EnRed);
    EXPECT_FALSE(knowsNoClinic(s));
    EXPECT_TRUE(opens());
}

TEST_F(NewMachine, TheDemoStaysBesideAndLeavesTheChoiceOpen)
{
    pick(QList<int>{2});
    EXPECT_TRUE(chooseClinic(s));
    EXPECT_EQ(s.dataFolder, store::demoFolder(s));
    EXPECT_TRUE(opens());
    EXPECT_GT(s.clientes->read("select count(*) from clientes").toInt(), 100);

    TestDialogs again;
    Sesion later(again, printing, store::Language::English);
    store::setDataFolder(later, {});
    EXPECT_TRUE(knowsNoClinic(later)) << "a clinic of one's own can still be chosen";
}
