#include "startup/login.h"
#include "support/clinic.h"
#include "texts/texts.h"

using namespace startup;
using namespace Qt::StringLiterals;

namespace
{

using Step = Login::Step;

class LoginRules : public Clinic
{
protected:
    LoginRules()
    {
        s.user = {};
        s.morvane->Execute("delete * from usuarios");
    }
    void user(int idu, const QString &name, const store::Value &password, int type = 2)
    {
        s.morvane->Execute("insert into usuarios (idu, nom, up, ut) values (?, ?, ?, ?)", idu, name,
                           password, type);
    }
};

} // namespace

TEST_F(LoginRules, ASoleUserWithoutPasswordIsNotAsked)
{
    for (const store::Value &none : {store::Value(), store::Value(u""_s)}) {
        s.morvane->Execute("delete * from usuarios");
        s.user = {};
        user(3, u"Ana"_s, none, 1);
        EXPECT_EQ(beginLogin(s).step, Step::Inside);
        EXPECT_EQ(s.user.idu, 3);
        EXPECT_EQ(s.user.nom, u"Ana"_s);
        EXPECT_TRUE(s.user.isCommon());
    }
}

TEST_F(LoginRules, EverybodyElseIsAsked)
{
    EXPECT_EQ(beginLogin(s).step, Step::AsksName) << "no user at all";
    user(1, u"Ana"_s, u"secret"_s);
    EXPECT_EQ(beginLogin(s).step, Step::AsksName) << "one with a password";
    s.morvane->Execute("update usuarios set up = ?", store::Value());
    user(2, u"Luis"_s, u""_s);
    EXPECT_EQ(beginLogin(s).step, Step::AsksName) << "two, though without passwords";
    EXPECT_EQ(s.user.idu, 0);
}

TEST_F(LoginRules, TheNameIsFoundWhateverItsCaseAndThePasswordComparedExactly)
{
    user(1, u"Ana"_s, u"Secret"_s);
    user(2, u"José"_s, store::Value());
    Login login = beginLogin(s);
    givePassword(s, login, u"Secret"_s);
    EXPECT_EQ(login.step, Step::AsksName) << "a password without a name is nothing";
    for (const auto &nobody : {u""_s, u"nobody"_s}) {
        giveName(s, login, nobody);
        EXPECT_EQ(login.step, Step::AsksName);
    }
    EXPECT_EQ(login.notice, s(text::UserDoesNotExist));

    giveName(s, login, u"*"_s);
    EXPECT_EQ(login.notice, s(text::LoginWelcome) + u" Ana."_s);
    for (const auto &wrong : {u"secret"_s, u"Secret "_s, u"S*"_s}) {
        EXPECT_EQ(login.step, Step::AsksPassword);
        EXPECT_EQ(s.user.idu, 0) << "nobody is in before the password";
        givePassword(s, login, wrong);
        EXPECT_EQ(login.notice, s(text::InvalidPassword));
    }
    givePassword(s, login, u"Secret"_s);
    EXPECT_EQ(login.step, Step::Inside);
    EXPECT_EQ(s.user.idu, 1);

    giveName(s, login, u"JOSÉ"_s);
    EXPECT_EQ(login.step, Step::Inside) << "who has no password is not asked for it";
    EXPECT_EQ(s.user.nom, u"José"_s);
}

TEST_F(LoginRules, TheFifthTryEndsTheProgramEvenIfItIsRight)
{
    user(1, u"Ana"_s, u"x"_s);
    user(2, u"Luis"_s, u"y"_s);
    Login login = beginLogin(s);
    for (int i = 0; i < 4; ++i) {
        giveName(s, login, i < 2 ? u"Ana"_s : u"Luis"_s); // another name resets nothing
        givePassword(s, login, u"wrong"_s);
        EXPECT_EQ(login.step, Step::AsksPassword);
        EXPECT_EQ(login.notice, s(text::InvalidPassword));
    }
    givePassword(s, login, u"y"_s);
    EXPECT_EQ(login.step, Step::Ends);
    EXPECT_EQ(s.user.idu, 0);
}
