#include "startup/login.h"
#include "support/clinic.h"

using namespace Qt::StringLiterals;

namespace
{

using Paso = Login::Paso;

class LoginRules : public Clinica
{
protected:
    LoginRules()
    {
        s.usuario = {};
        s.morvane->Execute("delete * from usuarios");
    }
    void user(int idu, const QString &name, const Valor &password, int type = 2)
    {
        s.morvane->Execute("insert into usuarios (idu, nom, up, ut) values (?, ?, ?, ?)", idu, name,
                           password, type);
    }
};

} // namespace

TEST_F(LoginRules, ASoleUserWithoutPasswordIsNotAsked)
{
    for (const Valor &none : {Valor(), Valor(u""_s)}) {
        s.morvane->Execute("delete * from usuarios");
        s.usuario = {};
        user(3, u"Ana"_s, none, 1);
        EXPECT_EQ(EmpezarLogin(s).paso, Paso::Dentro);
        EXPECT_EQ(s.usuario.idu, 3);
        EXPECT_EQ(s.usuario.nom, u"Ana"_s);
        EXPECT_TRUE(s.usuario.EsComun());
    }
}

TEST_F(LoginRules, EverybodyElseIsAsked)
{
    EXPECT_EQ(EmpezarLogin(s).paso, Paso::PideNombre) << "no user at all";
    user(1, u"Ana"_s, u"secret"_s);
    EXPECT_EQ(EmpezarLogin(s).paso, Paso::PideNombre) << "one with a password";
    s.morvane->Execute("update usuarios set up = ?", Valor());
    user(2, u"Luis"_s, u""_s);
    EXPECT_EQ(EmpezarLogin(s).paso, Paso::PideNombre) << "two, though without passwords";
    EXPECT_EQ(s.usuario.idu, 0);
}

TEST_F(LoginRules, TheNameIsFoundWhateverItsCaseAndThePasswordComparedExactly)
{
    user(1, u"Ana"_s, u"Secret"_s);
    user(2, u"José"_s, Valor());
    Login login = EmpezarLogin(s);
    DarContrasena(s, login, u"Secret"_s);
    EXPECT_EQ(login.paso, Paso::PideNombre) << "a password without a name is nothing";
    for (const auto &nobody : {u""_s, u"nobody"_s}) {
        DarNombre(s, login, nobody);
        EXPECT_EQ(login.paso, Paso::PideNombre);
    }
    EXPECT_EQ(login.aviso, s(3460));

    DarNombre(s, login, u"*"_s);
    EXPECT_EQ(login.aviso, s(3459) + u" Ana."_s);
    for (const auto &wrong : {u"secret"_s, u"Secret "_s, u"S*"_s}) {
        EXPECT_EQ(login.paso, Paso::PideContrasena);
        EXPECT_EQ(s.usuario.idu, 0) << "nobody is in before the password";
        DarContrasena(s, login, wrong);
        EXPECT_EQ(login.aviso, s(3458));
    }
    DarContrasena(s, login, u"Secret"_s);
    EXPECT_EQ(login.paso, Paso::Dentro);
    EXPECT_EQ(s.usuario.idu, 1);

    DarNombre(s, login, u"JOSÉ"_s);
    EXPECT_EQ(login.paso, Paso::Dentro) << "who has no password is not asked for it";
    EXPECT_EQ(s.usuario.nom, u"José"_s);
}

TEST_F(LoginRules, TheFifthTryEndsTheProgramEvenIfItIsRight)
{
    user(1, u"Ana"_s, u"x"_s);
    user(2, u"Luis"_s, u"y"_s);
    Login login = EmpezarLogin(s);
    for (int i = 0; i < 4; ++i) {
        DarNombre(s, login, i < 2 ? u"Ana"_s : u"Luis"_s); // another name forgives nothing
        DarContrasena(s, login, u"wrong"_s);
        EXPECT_EQ(login.paso, Paso::PideContrasena);
        EXPECT_EQ(login.aviso, s(3458));
    }
    DarContrasena(s, login, u"y"_s);
    EXPECT_EQ(login.paso, Paso::Termina);
    EXPECT_EQ(s.usuario.idu, 0);
}
