#include "admin/list_maintenance.h"

#include "store/identifiers.h"
#include "store/lookups.h"

#include <algorithm>
#include <string>

using namespace Qt::StringLiterals;
using namespace std::string_literals;

namespace
{

enum Texto {
    Eliminar = 3,
    EnUso = 18,
    ValorNoValido = 31,
    LocalidadNumerica = 2252,
    PidaEspecie = 2668,
    SinApostrofe = 4624,
    CodigoDeArea = 9644,
    CodigoPostal = 9645,
    PidaRegion = 9646,
    NoHayRegion = 9647,
    NoHayEspecie = 9648,
    YaEsta = 9649,
    NoCabe = 9650,
};

constexpr int MayorByte = 255;

// What the maintenance needs to know of a list. A list without `uso` can always be deleted from.
struct Datos {
    Lista lista;
    const char *tabla;
    const char *contador;
    int maximo;
    int pideNombre; // text of the prompt
    int titulo;
    const char *uso; // must come back empty before an entry goes
    bool usoPorNombre;
};

constexpr Datos Listas6[] = {
    {Lista::Region, "cldepartamento", "contadordep", MayorIdDe16Bits, 9638, 9632, nullptr, false},
    {Lista::Subregion, "cllocalidad", "contadorloc", MayorIdDe16Bits, 9639, 9633,
     "SELECT TOP 1 CLLocalidad.ID FROM Clientes LEFT JOIN CLLocalidad ON Clientes.Loc = "
     "CLLocalidad.ID WHERE CLLocalidad.ID = ?",
     false},
    {Lista::Marketing, "clmarketing", "contadormark", MayorIdDe16Bits, 9640, 9634, nullptr, false},
    {Lista::Especie, "mlespecies", "contadorespecie", MayorByte, 9641, 9635,
     "SELECT TOP 1 MLRazas.Id FROM MLRazas LEFT JOIN MLEspecies ON MLRazas.Esp = MLEspecies.ID "
     "WHERE MLEspecies.Nom LIKE ?",
     true},
    {Lista::Raza, "mlrazas", "contadorRaza", MayorIdDe16Bits, 9642, 9636,
     "SELECT TOP 1 Mascotas.Idm FROM Mascotas LEFT JOIN MLRazas ON Mascotas.raz = MLRazas.Id "
     "WHERE MLRazas.Nom LIKE ?",
     true},
    {Lista::Pelaje, "mlpelajes", "contadorpelaje", MayorIdDe16Bits, 9643, 9637,
     "SELECT TOP 1 Mascotas.Idm FROM Mascotas LEFT JOIN MLPelajes ON Mascotas.Pel = MLPelajes.Id "
     "WHERE MLPelajes.Nom LIKE ?",
     true},
};

const Datos &De(Lista lista) { return *std::ranges::find(Listas6, lista, &Datos::lista); }

// What LIKE takes for this name alone: the pattern of its beginning without the star.
QString PatronExacto(const QString &nom) { return PatronDePrefijo(nom).chopped(1); }

// Asks until the answer can be taken or the user backs out. What was typed stays in the box.
std::optional<QString> Pedir(Sesion &s, const Datos &d, int texto, QString inicial,
                             std::string_view columna,
                             const std::function<int(const QString &)> &falta)
{
    const int ancho = s.clientes->Ancho(d.tabla, columna);
    for (;;) {
        const auto escrito = s.dialogos.PedirTexto(s(d.titulo), s(texto), inicial);
        if (!escrito)
            return std::nullopt;
        inicial = escrito->trimmed();
        if (inicial.contains(u'\''))
            s.dialogos.Mensaje(s(SinApostrofe));
        else if (ancho > 0 && inicial.size() > ancho)
            s.dialogos.Mensaje(s(NoCabe) + u' ' + QString::number(ancho));
        else if (const int que = falta(inicial))
            s.dialogos.Mensaje(s(que));
        else
            return inicial;
    }
}

// nullopt for an empty name as well: it backs out.
std::optional<QString> PedirNombre(Sesion &s, const Datos &d, const Entrada &actual = {})
{
    const auto falta = [&](const QString &nom) -> int {
        if (SinLetras(nom) && d.lista == Lista::Subregion)
            return LocalidadNumerica;
        if (SinLetras(nom) && d.lista == Lista::Region)
            return ValorNoValido;
        const auto otra = EntradaPorNombre(s, d.lista, nom);
        return !nom.isEmpty() && otra && otra->id != actual.id ? YaEsta : 0;
    };
    auto nom = Pedir(s, d, d.pideNombre, actual.nom, "nom", falta);
    return nom && nom->isEmpty() ? std::nullopt : nom;
}

std::optional<QString> PedirCodigo(Sesion &s, const Datos &d, const Entrada &actual = {})
{
    const bool region = d.lista == Lista::Region;
    return Pedir(s, d, region ? CodigoDeArea : CodigoPostal, actual.codigo, region ? "ctel" : "cp",
                 [](const QString &) { return 0; });
}

// The id of a region or species by name; a name may be cut short with `*`. Not found refuses.
std::optional<int> PedirPadre(Sesion &s, const Datos &d, const Entrada &actual = {})
{
    const bool region = d.lista == Lista::Subregion;
    const QString inicial = NombreDelPadre(s, d.lista, actual);
    const auto nom =
        s.dialogos.PedirTexto(s(d.titulo), s(region ? PidaRegion : PidaEspecie), inicial);
    if (!nom)
        return std::nullopt;
    const QString limpio = nom->trimmed();
    if (actual.id != 0 && limpio == inicial)
        return actual.padre;
    // The very name first: it may hold what LIKE takes for a wildcard.
    if (const auto igual = EntradaPorNombre(s, region ? Lista::Region : Lista::Especie, limpio);
        igual && !limpio.isEmpty())
        return igual->id;
    const int id = limpio.isEmpty()
                       ? 0
                       : BuscarIdPorTexto(s, "clientes", region ? "CLDepartamento" : "MLEspecies",
                                          "Nom", limpio, "id");
    if (id == 0) {
        s.dialogos.Mensaje(s(region ? NoHayRegion : NoHayEspecie));
        return std::nullopt;
    }
    return id;
}

void Insertar(Sesion &s, const Datos &d, const Entrada &e)
{
    switch (d.lista) {
    case Lista::Region:
        s.clientes->Execute("insert into cldepartamento (id, nom, ctel) values (?, ?, ?)", e.id,
                            e.nom, e.codigo);
        return;
    case Lista::Subregion:
        s.clientes->Execute("insert into cllocalidad (id, nom, cp, dep) values (?, ?, ?, ?)", e.id,
                            e.nom, e.codigo, e.padre);
        return;
    case Lista::Raza:
        s.clientes->Execute("insert into mlrazas (id, nom, esp) values (?, ?, ?)", e.id, e.nom,
                            e.padre);
        return;
    case Lista::Marketing:
    case Lista::Especie:
    case Lista::Pelaje:
        s.clientes->Execute("insert into "s + d.tabla + " (id, nom) values (?, ?)", e.id, e.nom);
    }
}

} // namespace

QString NombreDelPadre(Sesion &s, Lista lista, const Entrada &entrada)
{
    if (lista == Lista::Subregion)
        return LeerCampo(s, "clientes", "cldepartamento", entrada.padre, "nom");
    if (lista == Lista::Raza)
        return LeerCampo(s, "clientes", "mlespecies", entrada.padre, "nom");
    return {};
}

std::optional<int> AgregarEntrada(Sesion &s, Lista lista)
{
    const Datos &d = De(lista);
    Entrada e;
    const auto nom = PedirNombre(s, d);
    if (!nom)
        return std::nullopt;
    e.nom = *nom;
    if (lista == Lista::Region || lista == Lista::Subregion) {
        const auto codigo = PedirCodigo(s, d);
        if (!codigo)
            return std::nullopt;
        e.codigo = *codigo;
    }
    if (lista == Lista::Subregion || lista == Lista::Raza) {
        const auto padre = PedirPadre(s, d);
        if (!padre)
            return std::nullopt;
        e.padre = *padre;
    }
    Lote lote(s);
    e.id = TomarIdentificador(s, d.contador, d.maximo);
    Insertar(s, d, e);
    lote.Confirmar();
    return e.id;
}

bool ModificarEntrada(Sesion &s, Lista lista, int id)
{
    const Datos &d = De(lista);
    const auto actual = EntradaPorId(s, lista, id);
    if (!actual)
        return false;
    const auto nom = PedirNombre(s, d, *actual);
    if (!nom)
        return false;
    if (lista == Lista::Region) {
        const auto ctel = PedirCodigo(s, d, *actual);
        if (!ctel)
            return false;
        // A code is a number here, on purpose: one with a letter fails in the store.
        if (std::ranges::any_of(*ctel, [](QChar c) { return c.isLetter(); }))
            throw ErrorDeAlmacen(ErrorNum::Parametros, s(ValorNoValido));
        s.clientes->Execute("update cldepartamento set nom = ?, ctel = ? where id = ?", *nom, *ctel,
                            id);
    } else if (lista == Lista::Subregion) {
        const auto cp = PedirCodigo(s, d, *actual);
        if (!cp)
            return false;
        const auto dep = PedirPadre(s, d, *actual);
        if (!dep)
            return false;
        s.clientes->Execute("update cllocalidad set nom = ?, cp = ?, dep = ? where id = ?", *nom,
                            *cp, *dep, id);
    } else {
        s.clientes->Execute("update "s + d.tabla + " set nom = ? where id = ?", *nom, id);
    }
    return true;
}

bool EliminarEntrada(Sesion &s, Lista lista, int id)
{
    const Datos &d = De(lista);
    const auto actual = EntradaPorId(s, lista, id);
    if (lista == Lista::Region || !actual)
        return false;
    if (d.uso) {
        const Valor cual = d.usoPorNombre ? Valor(PatronExacto(actual->nom)) : Valor(id);
        if (!s.clientes->OpenSnapshot(d.uso, cual).EOF_()) {
            s.dialogos.Mensaje(s(EnUso));
            return false;
        }
    }
    if (!s.dialogos.Pregunta(s(Eliminar)))
        return false;
    s.clientes->Execute("delete * from "s + d.tabla + " where id = ?", id);
    return true;
}
