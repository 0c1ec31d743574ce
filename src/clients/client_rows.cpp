#include "clients/client_rows.h"

#include "clients/reference_lists.h"
#include "store/jet/text.h"

#include <algorithm>

namespace
{

FilaDeCliente Leida(const Recordset &r)
{
    FilaDeCliente f{r[0].toInt(), r[1].toText(), r[2].toText(), SenaDeCliente::Ninguna};
    const int obra = r[4].toInt();
    if (r[3].toBool() || obra == 2)
        f.sena = SenaDeCliente::Alerta;
    else if (r[5].toBool() || r[6].toBool() || obra == 5)
        f.sena = SenaDeCliente::Aviso;
    return f;
}

// The store's own order, with each name's letters taken out once: sorting tens of thousands of
// clients there takes several times as long as reading them.
struct PorNombre {
    std::string llano;
    FilaDeCliente fila;
};

bool Antes(const PorNombre &a, const PorNombre &b)
{
    if (const int llanos = a.llano.compare(b.llano))
        return llanos < 0;
    if (a.fila.ayn != b.fila.ayn)
        if (const int acentos = jet::Comparar(a.fila.ayn.toStdString(), b.fila.ayn.toStdString()))
            return acentos < 0;
    return a.fila.idc < b.fila.idc;
}

} // namespace

std::vector<FilaDeCliente> FilasDeClientes(Sesion &s)
{
    Recordset r = s.clientes->OpenSnapshot(
        "select idc, ayn, tel2, deuda, obra, faltadir, faltamail from clientes");
    std::vector<PorNombre> orden;
    orden.reserve(size_t(r.RecordCount()));
    for (; !r.EOF_(); r.MoveNext()) {
        FilaDeCliente f = Leida(r);
        std::string llano = jet::Llano(f.ayn.toStdString());
        orden.push_back({std::move(llano), std::move(f)});
    }
    std::ranges::sort(orden, Antes);

    std::vector<FilaDeCliente> filas;
    filas.reserve(orden.size());
    for (PorNombre &p : orden)
        filas.push_back(std::move(p.fila));
    return filas;
}

std::optional<FilaDeCliente> FilaDelCliente(Sesion &s, int idc)
{
    const Recordset r = s.clientes->OpenSnapshot(
        "select idc, ayn, tel2, deuda, obra, faltadir, faltamail from clientes where idc = ?", idc);
    return r.EOF_() ? std::nullopt : std::optional(Leida(r));
}

std::vector<FilaDePaciente> FilasDePacientes(Sesion &s, int idc)
{
    std::vector<FilaDePaciente> filas;
    Recordset r = s.clientes->OpenSnapshot(
        "select mascotas.idm, mascotas.nom, mlespecies.nom, mlrazas.nom, mascotas.dec from "
        "(mascotas left join mlespecies on mascotas.esp = mlespecies.id) left join mlrazas on "
        "mascotas.raz = mlrazas.id where mascotas.idc = ? order by mascotas.nom",
        idc);
    for (; !r.EOF_(); r.MoveNext())
        filas.push_back({r[0].toInt(), r[1].toText(), r[2].toText(), r[3].toText(), r[4].toBool()});
    return filas;
}

BusquedaDeCliente TipoDeBusqueda(const QString &texto)
{
    const QString t = texto.trimmed();
    if (t.isEmpty())
        return BusquedaDeCliente::Nada;
    if (!EsNumerico(t))
        return BusquedaDeCliente::Nombre;
    return t.size() < 5 ? BusquedaDeCliente::Id : BusquedaDeCliente::Telefono;
}

std::vector<PacienteHallado> BuscarPacientes(Sesion &s, const QString &texto)
{
    std::vector<PacienteHallado> hallados;
    if (texto.trimmed().isEmpty())
        return hallados;
    Recordset r = s.clientes->OpenSnapshot(
        "select mascotas.idm, mascotas.idc, mascotas.nom, clientes.ayn from mascotas inner join "
        "clientes on mascotas.idc = clientes.idc where mascotas.nom like ? order by clientes.ayn, "
        "mascotas.nom",
        PatronConAsteriscos(texto.trimmed()));
    for (; !r.EOF_(); r.MoveNext())
        hallados.push_back({r[0].toInt(), r[1].toInt(), r[2].toText(), r[3].toText()});
    return hallados;
}
