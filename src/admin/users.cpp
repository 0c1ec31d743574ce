#include "admin/users.h"

#include "columns/configuracion.h"
#include "store/identifiers.h"
#include "store/lookups.h"
#include "texts/admin.h"
#include "texts/texts.h"

#include <QRegularExpression>

using namespace admin;
using namespace Qt::StringLiterals;

namespace
{

constexpr int Common = 1;
constexpr int Supervisor = 2;
constexpr int HighestUser = 255; // Usuarios.idu is a byte

/// Whether someone could log in under that name, which the login compares as a pattern.
bool usableName(Sesion &s, const QString &name)
{
    static const QRegularExpression wildcards(u"[*?#\\[\\]]"_s);
    return !name.contains(wildcards) && name.size() <= s.morvane->widthOf("Usuarios", "nom")
           && s.morvane->read("select count(*) from usuarios where nom = ?", name).toInt() == 0;
}

std::optional<QString> askName(Sesion &s)
{
    QString name;
    for (;;) {
        const auto given = s.dialogos.PedirTexto(s(text::User), s(text::AskUserName), name);
        name = given.value_or(QString()).trimmed();
        if (name.isEmpty())
            return std::nullopt;
        if (name.contains(u'\''))
            s.dialogos.Mensaje(s(text::ApostropheRefused));
        else if (!usableName(s, name))
            s.dialogos.Mensaje(s(text::NameDuplicateOrInvalid));
        else
            return name;
    }
}

std::optional<QString> askPassword(Sesion &s)
{
    for (;;) {
        const auto given = s.dialogos.askPassword(s(text::User), s(text::AskUserPassword));
        if (!given)
            return std::nullopt;
        if (given->contains(u'\''))
            s.dialogos.Mensaje(s(text::ApostropheRefused));
        else if (given->size() > s.morvane->widthOf("Usuarios", "up"))
            s.dialogos.Mensaje(s(text::InvalidValue)); // cut, it could not be typed again
        else
            return given;
    }
}

std::optional<int> askType(Sesion &s)
{
    QString type;
    for (;;) {
        const auto given = s.dialogos.PedirTexto(s(text::User), s(text::AskUserType), type);
        type = given.value_or(QString()).trimmed();
        if (type.isEmpty())
            return std::nullopt;
        if (type == u"1" || type == u"2")
            return type == u"1" ? Common : Supervisor;
        s.dialogos.Mensaje(s(text::InvalidValue));
    }
}

bool canDelete(Sesion &s, int idu)
{
    const QList<UserRow> usuarios = readUsers(s);
    int supervisors = 0;
    bool isIt = false;
    for (const UserRow &u : usuarios) {
        supervisors += u.ut == Supervisor;
        isIt |= u.idu == idu && u.ut == Supervisor;
    }
    return usuarios.size() >= 2 && !(isIt && supervisors == 1);
}

} // namespace

QList<UserRow> admin::readUsers(Sesion &s)
{
    QList<UserRow> rows;
    Recordset r = s.morvane->OpenSnapshot("SELECT * FROM Usuarios");
    for (; !r.EOF_(); r.MoveNext())
        rows.append({r["idu"].toInt(), r["nom"].toText(), r["ut"].toInt()});
    return rows;
}

QString admin::typeText(const Sesion &s, int ut)
{
    return ut == Common       ? s(text::UsersCommon)
           : ut == Supervisor ? s(text::UsersSupervisor)
                              : QString();
}

std::optional<int> admin::newUser(Sesion &s)
{
    if (s.configuracion[setting::contadorUsuarios].toInt() + 1 > HighestUser) {
        s.dialogos.Mensaje(s(text::UnableToPerform));
        return std::nullopt;
    }
    if (!s.dialogos.Pregunta(s(text::AddUserQuestion)))
        return std::nullopt;
    const auto name = askName(s);
    if (!name)
        return std::nullopt;
    const auto password = askPassword(s);
    if (!password)
        return std::nullopt;
    const auto type = askType(s);
    if (!type)
        return std::nullopt;

    Lote lote(s);
    const int idu = store::takeIdentifier(s, setting::contadorUsuarios, HighestUser);
    s.morvane->Execute("insert into usuarios (idu, nom, up, ut) values (?, ?, ?, ?)", idu, *name,
                       *password, *type);
    lote.commit();
    return idu;
}

bool admin::deleteUser(Sesion &s, int idu)
{
    if (!canDelete(s, idu)) {
        s.dialogos.Mensaje(s(text::UnableToPerform));
        return false;
    }
    const QString name = LeerCampo(s, "morvane", "usuarios", idu, "nom");
    if (!s.dialogos.askBeforeLoss(s(text::DeleteQuestion) + u"\n\n"_s + name))
        return false;
    bool deleted = false;
    {
        // Another terminal may have deleted one while the question was open.
        Lote lote(s);
        deleted = canDelete(s, idu);
        if (deleted)
            s.morvane->Execute("delete * from usuarios where idu = ?", idu);
        lote.commit();
    }
    if (!deleted)
        s.dialogos.Mensaje(s(text::UnableToPerform));
    return deleted;
}

bool admin::modifyPassword(Sesion &s, int idu)
{
    const auto password = askPassword(s);
    if (!password)
        return false;
    s.morvane->Execute("UPDATE Usuarios SET up = ? WHERE IDU = ?", *password, idu);
    return true;
}
