#include "admin/users.h"

#include "support/clinic.h"

using namespace admin;
using namespace Qt::StringLiterals;

namespace
{

/// Ana, a Supervisor, and Luis, a Common user; the counter is at the last one.
class Users : public Clinic
{
protected:
    Users()
    {
        s.morvane->Execute("delete * from usuarios");
        s.morvane->Execute("insert into usuarios (idu, nom, up, ut) values (1, 'Ana', 'gato', 2)");
        s.morvane->Execute("insert into usuarios (idu, nom, up, ut) values (2, 'Luis', '', 1)");
        counter(2);
    }
    void counter(int n) { s.morvane->Execute("update configuracion set contadorUsuarios = ?", n); }
    QString all()
    {
        return allRows(*s.morvane, "select idu, nom, up, ut from usuarios order by idu");
    }
    QString counted() { return allRows(*s.morvane, "select contadorUsuarios from configuracion"); }

    const QString before = u"1|Ana|gato|2\n2|Luis||1\n"_s;
    const QString add = u"Add a user?"_s;
    const QString name = u"Enter 'username'"_s;
    const QString password = u"Enter the 'password'"_s;
    const QString type = u"Enter 'user type'"_s;
};

} // namespace

TEST_F(Users, EachAnswerIsAskedForAgainUntilItCanBeUsed)
{
    ask.wait(add);
    ask.expectText(name, u"ANA"_s);
    ask.wait(u"Name or item duplicate"_s);
    ask.expectText(name, u"d'Or"_s);
    ask.wait(u"Can not use the character"_s);
    ask.expectText(name, u"a*"_s); // the login would take it for a pattern
    ask.wait(u"Name or item duplicate"_s);
    ask.expectText(name, QString(51, u'x'));
    ask.wait(u"Name or item duplicate"_s);
    ask.expectText(name, u" Eva "_s);
    ask.expectText(password, u"a'b"_s);
    ask.wait(u"Can not use the character"_s);
    ask.expectText(password, QString(51, u'x'));
    ask.wait(u"valid value"_s);
    ask.expectText(password, u"perro"_s);
    ask.expectText(type, u"3"_s);
    ask.wait(u"valid value"_s);
    ask.expectText(type, u"12"_s);
    ask.wait(u"valid value"_s);
    ask.expectText(type, u"2"_s);
    EXPECT_EQ(newUser(s), 3);
    EXPECT_EQ(all(), before + u"3|Eva|perro|2\n"_s);
    EXPECT_EQ(counted(), u"3\n"_s);
}

TEST_F(Users, BackingOutOfAnyAnswerAddsNothing)
{
    for (int answered = 0; answered < 3; ++answered)
        for (const auto &exit : {std::optional<QString>(), std::optional<QString>(u""_s)}) {
            if (answered == 1 && exit)
                continue; // an empty password is valid
            ask.wait(add);
            if (answered > 0)
                ask.expectText(name, u"Eva"_s);
            if (answered > 1)
                ask.expectText(password, u""_s);
            ask.expectText(QStringList{name, password, type}[answered], exit);
            EXPECT_EQ(newUser(s), std::nullopt) << answered;
        }
    ask.wait(add, false);
    EXPECT_EQ(newUser(s), std::nullopt);
    EXPECT_EQ(all(), before);
    EXPECT_EQ(counted(), u"2\n"_s);
}

TEST_F(Users, NumbersEndWhereTheirColumnDoes)
{
    counter(254);
    ask.wait(add);
    ask.expectText(name, u"Eva"_s);
    ask.expectText(password, u""_s);
    ask.expectText(type, u"1"_s);
    EXPECT_EQ(newUser(s), 255);
    for (int full : {255, 256}) {
        counter(full);
        ask.wait(u"Unable to perform action"_s);
        EXPECT_EQ(newUser(s), std::nullopt) << full;
    }
    EXPECT_EQ(all(), before + u"255|Eva||1\n"_s);
}

TEST_F(Users, TheLastOneAndTheLastSupervisorStay)
{
    ask.wait(u"Unable to perform action"_s);
    EXPECT_FALSE(deleteUser(s, 1));
    ask.wait(u"Delete?"_s, false);
    EXPECT_FALSE(deleteUser(s, 2));
    EXPECT_EQ(all(), before);

    ask.wait(u"Delete?"_s);
    EXPECT_TRUE(deleteUser(s, 2));
    ask.wait(u"Unable to perform action"_s);
    EXPECT_FALSE(deleteUser(s, 1));
    EXPECT_EQ(all(), u"1|Ana|gato|2\n"_s);

    // With a second Supervisor, the first can be deleted.
    s.morvane->Execute("insert into usuarios (idu, nom, up, ut) values (3, 'Eva', '', 2)");
    ask.wait(u"Delete?"_s);
    EXPECT_TRUE(deleteUser(s, 1));
    EXPECT_EQ(all(), u"3|Eva||2\n"_s);
}

TEST_F(Users, APasswordIsChangedTakenAwayOrLeft)
{
    ask.expectText(password, std::nullopt);
    EXPECT_FALSE(modifyPassword(s, 1));
    EXPECT_EQ(all(), before);
    ask.expectText(password, u"'"_s);
    ask.wait(u"Can not use the character"_s);
    ask.expectText(password, u"ratón"_s);
    EXPECT_TRUE(modifyPassword(s, 2));
    ask.expectText(password, u""_s);
    EXPECT_TRUE(modifyPassword(s, 1));
    EXPECT_EQ(all(), u"1|Ana||2\n2|Luis|ratón|1\n"_s);
}
