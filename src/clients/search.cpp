#include "clients/search.h"

#include "clients/reference_lists.h"
#include "store/jet/text.h"
#include "store/lookups.h"
#include "store/opening.h"

#include <algorithm>

namespace
{

enum Texto {
    Email = 16,
    SoloUnoODos = 2402,
    Nombre = 2201,
    Raza = 9804,
    Especie = 9805,
    Pelaje = 9806,
    Senas = 9807,
    Chip = 9808,
    Propietario = 9809,
    Direccion = 9810,
    Subregion = 9811,
    Region = 9812,
    CodigoPostal = 9813,
    CodigoDeArea = 9814,
    Telefono = 9815,
    Celular = 9816,
    Medio = 9817,
    Notas = 9818,
    Pedigri = 9819,
    Reproductor = 9820,
    Muerte = 9821,
    Id = 9822,
};

constexpr std::string_view PorLocalidad =
    "Clientes.Loc IN (SELECT ID FROM CLLocalidad WHERE Nom LIKE ?)";

constexpr CriterioDeBusqueda DeMascotas[] = {
    {.nombre = Nombre, .clausula = "Mascotas.Nom LIKE ?"},
    {.nombre = Raza,
     .clausula = "MLRazas.Nom LIKE ?",
     .atajo = "Mascotas.Raz IN (SELECT ID FROM MLRazas WHERE Nom LIKE ?)"},
    {.nombre = Especie,
     .clausula = "MLEspecies.Nom LIKE ?",
     .atajo = "Mascotas.Esp IN (SELECT ID FROM MLEspecies WHERE Nom LIKE ?)"},
    {.nombre = Pelaje,
     .clausula = "MLPelajes.Nom LIKE ?",
     .atajo = "Mascotas.Pel IN (SELECT ID FROM MLPelajes WHERE Nom LIKE ?)"},
    {.nombre = Senas, .clausula = "Mascotas.Car LIKE ?"},
    {.nombre = Chip, .clausula = "Mascotas.Chip LIKE ?"},
    {.nombre = Propietario, .clausula = "Clientes.ayn LIKE ?", .delDueno = true},
    {.nombre = Direccion, .clausula = "Clientes.Dir LIKE ?", .delDueno = true},
    {.nombre = Subregion,
     .clausula = "CLLocalidad.Nom LIKE ?",
     .atajo = PorLocalidad,
     .delDueno = true},
    {.nombre = Telefono, .clausula = "Clientes.Tel2 LIKE ?", .delDueno = true},
    {.nombre = Celular, .clausula = "Clientes.TelC2 LIKE ?", .delDueno = true},
    {.nombre = Notas, .clausula = "Mascotas.Obs LIKE ?"},
    {.nombre = Pedigri, .clausula = "Mascotas.Ped", .siNo = true},
    {.nombre = Reproductor, .clausula = "Mascotas.Rep", .siNo = true},
    {.nombre = Muerte, .clausula = "Mascotas.Dec", .siNo = true},
};

constexpr CriterioDeBusqueda DeClientes[] = {
    {.nombre = Nombre, .clausula = "Clientes.Ayn LIKE ?"},
    {.nombre = Direccion, .clausula = "Clientes.Dir LIKE ?"},
    {.nombre = Subregion, .clausula = "CLLocalidad.Nom LIKE ?", .atajo = PorLocalidad},
    // Intended: the table has no such column, and the user is shown the store's error.
    {.nombre = Region, .clausula = "CLDepartamento.Nombre LIKE ?"},
    {.nombre = CodigoPostal, .clausula = "Clientes.codp2 LIKE ?"},
    {.nombre = CodigoDeArea, .clausula = "Clientes.Codt2 LIKE ?"},
    {.nombre = Telefono, .clausula = "Clientes.Tel2 LIKE ?"},
    {.nombre = Celular, .clausula = "Clientes.Telc2 LIKE ?"},
    {.nombre = Email, .clausula = "Clientes.Email LIKE ?"},
    {.nombre = Medio,
     .clausula = "CLMarketing.Nom LIKE ?",
     .atajo = "Clientes.Mark IN (SELECT ID FROM CLMarketing WHERE Nom LIKE ?)"},
    {.nombre = Notas, .clausula = "Clientes.Obs LIKE ?"},
};

constexpr int TitulosDeMascotas[] = {
    Id,      Nombre,      Propietario, Raza,      Especie,   Pelaje,   Senas,   Chip,
    Pedigri, Reproductor, Muerte,      Direccion, Subregion, Telefono, Celular, Notas};
constexpr int TitulosDeClientes[] = {Id,      Nombre,       Direccion,    Subregion,
                                     Region,  CodigoPostal, CodigoDeArea, Telefono,
                                     Celular, Email,        Medio,        Notas};

// The cells of a row and where they come from. Patients are read from their own table, or from
// that of their owners when only owners are asked for.
constexpr std::string_view CeldasDeMascotas =
    "Mascotas.idm, Mascotas.nom, Clientes.ayn, MLRazas.nom, MLEspecies.nom, MLPelajes.nom, "
    "Mascotas.car, Mascotas.Chip, Mascotas.ped, Mascotas.rep, Mascotas.dec, Clientes.dir, "
    "CLLocalidad.nom, Clientes.tel2, Clientes.telc2, Mascotas.obs";
constexpr std::string_view DesdeMascotas = "Mascotas LEFT JOIN Clientes";
constexpr std::string_view DesdeDuenos = "Clientes LEFT JOIN Mascotas";
constexpr std::string_view ListasDeMascotas =
    " ON Mascotas.IDC = Clientes.IDC) LEFT JOIN MLRazas ON Mascotas.Raz = MLRazas.ID) LEFT JOIN "
    "MLEspecies ON Mascotas.Esp = MLEspecies.ID) LEFT JOIN MLPelajes ON Mascotas.Pel = "
    "MLPelajes.ID) LEFT JOIN CLLocalidad ON Clientes.Loc = CLLocalidad.ID)";
constexpr std::string_view CeldasDeClientes =
    "Clientes.idc, Clientes.ayn, Clientes.dir, CLLocalidad.nom, CLDepartamento.nom, "
    "Clientes.codp2, Clientes.codt2, Clientes.tel2, Clientes.telc2, Clientes.email, "
    "CLMarketing.nom, Clientes.obs";
constexpr std::string_view DesdeClientes =
    "(((Clientes LEFT JOIN CLLocalidad ON Clientes.Loc = CLLocalidad.ID) LEFT JOIN CLDepartamento "
    "ON Clientes.Dep = CLDepartamento.ID) LEFT JOIN CLMarketing ON Clientes.Mark = "
    "CLMarketing.ID)";

// The clauses of a search and their values.
struct Filtro {
    std::string clausulas;
    std::vector<Valor> valores;
    bool deDuenos = true;   // every clause is about the owner
    bool rechazado = false; // a Yes/No was asked for with something else
};

Filtro FiltroDe(Busqueda busqueda, const Condiciones &condiciones)
{
    Filtro f;
    const auto sumar = [&f](std::string_view clausula) {
        f.clausulas += f.clausulas.empty() ? "" : " AND ";
        f.clausulas += clausula;
    };
    for (const auto &[cual, dado] : condiciones) {
        const QString texto = QuitarApostrofes(dado);
        if (texto.isEmpty())
            continue;
        const CriterioDeBusqueda &criterio = CriteriosDe(busqueda)[size_t(cual)];
        f.deDuenos = f.deDuenos && criterio.delDueno;
        sumar(criterio.clausula);
        if (criterio.siNo) {
            f.clausulas += texto == u"1" ? " = -1" : " = 0";
            f.rechazado = f.rechazado || (texto != u"1" && texto != u"2");
            continue;
        }
        f.valores.emplace_back(u'*' + PatronConAsteriscos(texto));
        if (!criterio.atajo.empty()) {
            sumar(criterio.atajo);
            f.valores.push_back(f.valores.back());
        }
    }
    return f;
}

// @param limite rows at most, 0 for all
std::string Consulta(Busqueda busqueda, const Filtro &filtro, size_t limite)
{
    std::string sql = "SELECT ";
    if (limite > 0) // one more, to know that there is
        sql += "TOP " + std::to_string(limite + 1) + ' ';
    if (busqueda == Busqueda::Clientes) {
        sql += CeldasDeClientes;
        sql += " FROM ";
        sql += DesdeClientes;
        sql += " WHERE " + filtro.clausulas;
    } else {
        sql += CeldasDeMascotas;
        sql += " FROM (((((";
        sql += filtro.deDuenos ? DesdeDuenos : DesdeMascotas;
        sql += ListasDeMascotas;
        sql += " WHERE " + filtro.clausulas;
        if (filtro.deDuenos)
            sql += " AND Mascotas.idm IS NOT NULL";
    }
    // Which rows are the first is only known when all have been read.
    if (limite == 0)
        sql += busqueda == Busqueda::Clientes ? " ORDER BY Clientes.Ayn"
                                              : " ORDER BY Mascotas.Nom, Clientes.Ayn";
    return sql;
}

void Ordenar(Busqueda busqueda, std::vector<QList<Valor>> &filas)
{
    const auto comparar = [](const QList<Valor> &a, const QList<Valor> &b, int celda) {
        return jet::Comparar(a[celda].toText().toStdString(), b[celda].toText().toStdString());
    };
    std::ranges::stable_sort(filas, [&](const QList<Valor> &a, const QList<Valor> &b) {
        const int nombre = comparar(a, b, 1);
        if (nombre != 0 || busqueda == Busqueda::Clientes)
            return nombre < 0;
        return comparar(a, b, 2) < 0;
    });
}

Hallazgo BuscarHasta(Sesion &s, Busqueda busqueda, const Condiciones &condiciones, size_t limite)
{
    Hallazgo h;
    const Filtro filtro = FiltroDe(busqueda, condiciones);
    if (filtro.rechazado)
        h.impedimento = s(SoloUnoODos);
    if (filtro.rechazado || filtro.clausulas.empty())
        return h;

    Recordset r = s.clientes->Abrir(Consulta(busqueda, filtro, limite), filtro.valores, false);
    h.hayMas = limite > 0 && size_t(r.RecordCount()) > limite;
    for (; !r.EOF_(); r.MoveNext()) {
        if (limite > 0 && h.filas.size() == limite)
            break;
        QList<Valor> &celdas = h.filas.emplace_back();
        celdas.reserve(r.Columnas());
        for (int c = 0; c < r.Columnas(); ++c)
            celdas << r[c];
    }
    if (limite > 0)
        Ordenar(busqueda, h.filas);
    h.buscado = true;
    return h;
}

} // namespace

std::span<const CriterioDeBusqueda> CriteriosDe(Busqueda b)
{
    if (b == Busqueda::Mascotas)
        return DeMascotas;
    return DeClientes;
}

std::span<const int> TitulosDe(Busqueda b)
{
    if (b == Busqueda::Mascotas)
        return TitulosDeMascotas;
    return TitulosDeClientes;
}

Hallazgo Buscar(Sesion &s, Busqueda busqueda, const Condiciones &condiciones)
{
    return BuscarHasta(s, busqueda, condiciones, 0);
}

Hallazgo BuscarAlTeclear(Sesion &s, Busqueda busqueda, const Condiciones &condiciones)
{
    try {
        return BuscarHasta(s, busqueda, condiciones, FilasAlTeclear);
    } catch (const ErrorDeAlmacen &e) {
        Hallazgo h;
        h.impedimento = TextoDeError(s, e);
        return h;
    }
}

bool TomarHallado(Sesion &s, Busqueda busqueda, int id)
{
    if (busqueda == Busqueda::Mascotas) {
        const Valor idc = s.clientes->Leer("select idc from mascotas where idm = ?", id);
        if (idc.EsNulo())
            return false;
        s.IdGlobal = {idc.toInt(), id};
        return true;
    }
    if (s.clientes->Leer("select idc from clientes where idc = ?", id).EsNulo())
        return false;
    if (s.IdGlobal.idc != id)
        s.IdGlobal = {
            id, s.clientes->Leer("select top 1 idm from mascotas where idc = ? order by nom", id)
                    .toInt()};
    return true;
}
