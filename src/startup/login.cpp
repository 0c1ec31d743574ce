#include "startup/login.h"

using namespace Qt::StringLiterals;

namespace
{

enum Texto { ContrasenaInvalida = 3458, Bienvenido = 3459, NoExiste = 3460 };

constexpr int wrongTriesTold = 4;

Usuario userOf(const Recordset &row)
{
    return {row["idu"].toInt(), row["ut"].toInt(), row["nom"].toText()};
}

void enter(Sesion &s, Login &login)
{
    s.usuario = login.hallado;
    login.contrasena.clear();
    login.paso = Login::Paso::Dentro;
}

} // namespace

Login EmpezarLogin(Sesion &s)
{
    Login login;
    Recordset users = s.morvane->OpenSnapshot("select * from usuarios");
    if (users.RecordCount() == 1 && users["up"].toText().isEmpty()) {
        login.hallado = userOf(users);
        enter(s, login);
    }
    return login;
}

void DarNombre(Sesion &s, Login &login, const QString &texto)
{
    Recordset rows = s.morvane->OpenSnapshot("select * from usuarios where nom like ?", texto);
    if (rows.EOF_()) {
        login.paso = Login::Paso::PideNombre;
        login.aviso = s(NoExiste);
        return;
    }
    login.hallado = userOf(rows);
    login.contrasena = rows["up"].toText();
    login.aviso = s(Bienvenido) + u' ' + login.hallado.nom + u'.';
    if (login.contrasena.isEmpty())
        enter(s, login);
    else
        login.paso = Login::Paso::PideContrasena;
}

void DarContrasena(Sesion &s, Login &login, const QString &texto)
{
    if (login.paso != Login::Paso::PideContrasena)
        return;
    if (login.intentos >= wrongTriesTold) {
        login.paso = Login::Paso::Termina;
    } else if (texto == login.contrasena) {
        enter(s, login);
    } else {
        ++login.intentos;
        login.aviso = s(ContrasenaInvalida);
    }
}
