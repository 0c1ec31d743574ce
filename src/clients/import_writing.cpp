#include "clients/import_plan.h"

#include "store/lookups.h"
#include "store/opening.h"

#include <QLocale>
#include <QRegularExpression>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace importacion
{

namespace
{
constexpr int FilasPorLote = 500;
}

// --- Writing

// The id of an entry, which is added when the first row that uses it is written. That it is new the
// plan knows: asking the file again for each would take as long as the list is, every time.
int Plan::Escrita(ListaPrevista &lista, int lugar)
{
    if (lugar < 0)
        return 0;
    ++lista.entradas[size_t(lugar)].usos;
    return Agregada(lista, lugar);
}

// The same without counting a use: a parent may be one that only rows name which add nothing.
int Plan::Agregada(ListaPrevista &lista, int lugar)
{
    if (lugar < 0)
        return 0;
    EntradaPrevista &e = lista.entradas[size_t(lugar)];
    if (e.id)
        return e.id;
    int padre = 0;
    if (lista.lista == Lista::Subregion)
        padre = Agregada(regiones, e.padre);
    else if (lista.lista == Lista::Raza)
        padre = Agregada(especies, e.padre);
    e.id = TomarIdentificador(s, lista.contador, lista.maximo);
    switch (lista.lista) {
    case Lista::Region:
        s.clientes->Execute("insert into cldepartamento (id, nom, ctel) values (?, ?, ?)", e.id,
                            e.nom, e.codigo);
        break;
    case Lista::Subregion:
        s.clientes->Execute("insert into cllocalidad (id, nom, cp, dep) values (?, ?, ?, ?)", e.id,
                            e.nom, e.codigo, padre);
        break;
    case Lista::Raza:
        s.clientes->Execute("insert into mlrazas (id, nom, esp) values (?, ?, ?)", e.id, e.nom,
                            padre);
        break;
    default:
        s.clientes->Execute("insert into " + std::string(lista.tabla) + " (id, nom) values (?, ?)",
                            e.id, e.nom);
    }
    return e.id;
}

void Plan::SubirRangos(ListaPrevista &lista)
{
    const std::string sql = "update " + std::string(lista.tabla)
                            + " set ran = IIf(ran + ? > 32000, 32000, ran + ?) where id = ?";
    for (EntradaPrevista &e : lista.entradas)
        if (e.usos > 0) {
            s.clientes->Execute(sql, e.usos, e.usos, e.id);
            e.usos = 0;
        }
}

void Plan::Escribir(ClientePrevisto &c)
{
    const int dep = Escrita(regiones, c.region);
    const int loc = Escrita(subregiones, c.subregion);
    c.f.idc = TomarIdentificador(s, "contadorclientes", MayorIdDe16Bits);
    s.clientes->Execute(
        "insert into clientes (idc, ayn, dir, loc, dep, codp2, codt2, tel2, telc2, email, mark,"
        " obs, feci, fecu, deuda) values (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, 0, ?, ?, ?, 0)",
        c.f.idc, c.f.ayn, c.f.dir, loc, dep, c.f.codp2, c.f.codt2, c.f.tel2, c.f.telc2, c.f.email,
        c.f.obs, s.reloj.hoy, s.reloj.hoy);
    s.morvane->Execute("insert into perfiles (idc) values (?)", c.f.idc);
}

void Plan::Escribir(MascotaPrevista &m)
{
    const FichaDePaciente &f = m.f;
    const int esp = Escrita(especies, m.especie);
    const int raz = Escrita(razas, m.raza);
    const int pel = Escrita(pelajes, m.pelaje);
    const int idm = TomarIdentificador(s, "contadormascotas", MayorIdDe16Bits);
    s.clientes->Execute(
        "insert into mascotas (idm, idc, nom, esp, raz, pel, car, Chip, fecn, pes, sex, ped, rep,"
        " dec, ser, obs, feci, fot) values (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, 0, ?, 0, ?, ?, 0)",
        idm, clientes[size_t(m.cliente)].f.idc, f.nom, esp, raz, pel, f.car, f.Chip, f.fecn, f.pes,
        f.sex, f.ped, f.dec, f.obs, s.reloj.hoy);
}

void Plan::Escribir(const Seguir &seguir)
{
    informe.escrito = true;
    size_t hechas = 0;
    try {
        while (hechas < filas.size()) {
            s.avance.Barra(int(hechas), int(filas.size()));
            if (seguir && !seguir()) {
                informe.interrumpido = true;
                break;
            }
            const size_t hasta = std::min(filas.size(), hechas + FilasPorLote);
            Lote lote(s);
            for (size_t n = hechas; n < hasta; ++n) {
                if (informe.lineas[n].suerte != Suerte::Nueva)
                    continue;
                const FilaPrevista &fila = filas[n];
                if (AgregaCliente(fila))
                    Escribir(clientes[size_t(fila.cliente)]);
                if (AgregaMascota(fila))
                    Escribir(mascotas[size_t(fila.mascota)]);
            }
            for (ListaPrevista *lista : {&regiones, &subregiones, &razas})
                SubirRangos(*lista);
            lote.Confirmar();
            hechas = hasta;
        }
        s.avance.Barra(int(hechas), int(filas.size()));
    } catch (const ErrorDeAlmacen &e) {
        informe.interrumpido = true;
        informe.falla = TextoDeError(s, e);
    }
    if (informe.interrumpido) { // tell of what was written, and of nothing else
        filas.resize(hechas);
        informe.lineas.resize(hechas);
        Contar();
    }
}

} // namespace importacion
