#include "admin/users.h"

#include "store/identifiers.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace
{

enum Texto {
    Eliminar = 3,
    NoSePuede = 29,
    NombreNoValido = 30,
    ValorNoValido = 31,
    Usuario_ = 33,
    PideNombre = 2607,
    PideContrasena = 2608,
    PideTipo = 2609,
    SinApostrofe = 4624,
    Agregar = 9727,
    Comun_ = 9576,
    Supervisor_ = 9577,
};

constexpr int Comun = 1;
constexpr int Supervisor = 2;
constexpr int MayorUsuario = 255; // Usuarios.idu is a byte

/// Whether someone can enter under that name: it is compared as a pattern at the login.
bool NombreServible(Sesion &s, const QString &nombre)
{
    static const QRegularExpression comodines(u"[*?#\\[\\]]"_s);
    return !nombre.contains(comodines) && nombre.size() <= s.morvane->Ancho("Usuarios", "nom")
           && s.morvane->Leer("select count(*) from usuarios where nom = ?", nombre).toInt() == 0;
}

std::optional<QString> PedirNombre(Sesion &s)
{
    QString nombre;
    for (;;) {
        const auto dado = s.dialogos.PedirTexto(s(Usuario_), s(PideNombre), nombre);
        nombre = dado.value_or(QString()).trimmed();
        if (nombre.isEmpty())
            return std::nullopt;
        if (nombre.contains(u'\''))
            s.dialogos.Mensaje(s(SinApostrofe));
        else if (!NombreServible(s, nombre))
            s.dialogos.Mensaje(s(NombreNoValido));
        else
            return nombre;
    }
}

std::optional<QString> PedirContrasena(Sesion &s)
{
    for (;;) {
        const auto dada = s.dialogos.PedirContrasena(s(Usuario_), s(PideContrasena));
        if (!dada)
            return std::nullopt;
        if (dada->contains(u'\''))
            s.dialogos.Mensaje(s(SinApostrofe));
        else if (dada->size() > s.morvane->Ancho("Usuarios", "up"))
            s.dialogos.Mensaje(s(ValorNoValido)); // cut, it would never be typed right again
        else
            return dada;
    }
}

std::optional<int> PedirTipo(Sesion &s)
{
    QString tipo;
    for (;;) {
        const auto dado = s.dialogos.PedirTexto(s(Usuario_), s(PideTipo), tipo);
        tipo = dado.value_or(QString()).trimmed();
        if (tipo.isEmpty())
            return std::nullopt;
        if (tipo == u"1" || tipo == u"2")
            return tipo == u"1" ? Comun : Supervisor;
        s.dialogos.Mensaje(s(ValorNoValido));
    }
}

bool PuedeEliminar(Sesion &s, int idu)
{
    const QList<FilaDeUsuario> usuarios = LeerUsuarios(s);
    int supervisores = 0;
    bool loEs = false;
    for (const FilaDeUsuario &u : usuarios) {
        supervisores += u.ut == Supervisor;
        loEs |= u.idu == idu && u.ut == Supervisor;
    }
    return usuarios.size() >= 2 && !(loEs && supervisores == 1);
}

} // namespace

QList<FilaDeUsuario> LeerUsuarios(Sesion &s)
{
    QList<FilaDeUsuario> filas;
    Recordset r = s.morvane->OpenSnapshot("SELECT * FROM Usuarios");
    for (; !r.EOF_(); r.MoveNext())
        filas.append({r["idu"].toInt(), r["nom"].toText(), r["ut"].toInt()});
    return filas;
}

QString TextoDeTipo(const Sesion &s, int ut)
{
    return ut == Comun ? s(Comun_) : ut == Supervisor ? s(Supervisor_) : QString();
}

std::optional<int> NuevoUsuario(Sesion &s)
{
    if (s.configuracion["contadorUsuarios"].toInt() + 1 > MayorUsuario) {
        s.dialogos.Mensaje(s(NoSePuede));
        return std::nullopt;
    }
    if (!s.dialogos.Pregunta(s(Agregar)))
        return std::nullopt;
    const auto nombre = PedirNombre(s);
    if (!nombre)
        return std::nullopt;
    const auto contrasena = PedirContrasena(s);
    if (!contrasena)
        return std::nullopt;
    const auto tipo = PedirTipo(s);
    if (!tipo)
        return std::nullopt;

    Lote lote(s);
    const int idu = TomarIdentificador(s, "contadorUsuarios", MayorUsuario);
    s.morvane->Execute("insert into usuarios (idu, nom, up, ut) values (?, ?, ?, ?)", idu, *nombre,
                       *contrasena, *tipo);
    lote.Confirmar();
    return idu;
}

bool EliminarUsuario(Sesion &s, int idu)
{
    if (!PuedeEliminar(s, idu)) {
        s.dialogos.Mensaje(s(NoSePuede));
        return false;
    }
    if (!s.dialogos.Pregunta(s(Eliminar)))
        return false;
    bool eliminado = false;
    {
        // Another terminal may have deleted one while the question stood.
        Lote lote(s);
        eliminado = PuedeEliminar(s, idu);
        if (eliminado)
            s.morvane->Execute("delete * from usuarios where idu = ?", idu);
        lote.Confirmar();
    }
    if (!eliminado)
        s.dialogos.Mensaje(s(NoSePuede));
    return eliminado;
}

bool ModificarContrasena(Sesion &s, int idu)
{
    const auto contrasena = PedirContrasena(s);
    if (!contrasena)
        return false;
    s.morvane->Execute("UPDATE Usuarios SET up = ? WHERE IDU = ?", *contrasena, idu);
    return true;
}
