#include "startup/login.h"

#include "texts/texts.h"

using namespace startup;
using namespace Qt::StringLiterals;

namespace
{

constexpr int WrongTriesTold = 4;

store::User userOf(const Recordset &row)
{
    return {row["idu"].toInt(), row["ut"].toInt(), row["nom"].toText()};
}

void enter(Sesion &s, Login &login)
{
    s.user = login.found;
    login.password.clear();
    login.step = Login::Step::Inside;
}

} // namespace

Login startup::beginLogin(Sesion &s)
{
    Login login;
    Recordset users = s.morvane->OpenSnapshot("select * from usuarios");
    if (users.RecordCount() == 1 && users["up"].toText().isEmpty()) {
        login.found = userOf(users);
        enter(s, login);
    }
    return login;
}

void startup::giveName(Sesion &s, Login &login, const QString &text)
{
    Recordset rows = s.morvane->OpenSnapshot("select * from usuarios where nom like ?", text);
    if (rows.EOF_()) {
        login.step = Login::Step::AsksName;
        login.notice = s(text::UserDoesNotExist);
        return;
    }
    login.found = userOf(rows);
    login.password = rows["up"].toText();
    login.notice = s(text::LoginWelcome) + u' ' + login.found.nom + u'.';
    if (login.password.isEmpty())
        enter(s, login);
    else
        login.step = Login::Step::AsksPassword;
}

void startup::givePassword(Sesion &s, Login &login, const QString &text)
{
    if (login.step != Login::Step::AsksPassword)
        return;
    if (login.attempts >= WrongTriesTold) {
        login.step = Login::Step::Ends;
    } else if (text == login.password) {
        enter(s, login);
    } else {
        ++login.attempts;
        login.notice = s(text::InvalidPassword);
    }
}
