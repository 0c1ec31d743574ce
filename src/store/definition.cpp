// Changes of the schema: new tables and columns, and columns changed or dropped by rebuilding.

#include "store/database_internal.h"
#include "store/jet/text.h"

#include <algorithm>
#include <charconv>

namespace
{

struct NombreDeTipo {
    Tipo tipo;
    const char *nombre;
};

// COUNTER is declared as the engine needs it for an identity.
constexpr NombreDeTipo Nombres[] = {
    {Tipo::Counter, "INTEGER"},   {Tipo::Byte, "BYTE"},     {Tipo::Smallint, "SMALLINT"},
    {Tipo::Long, "LONG"},         {Tipo::Single, "SINGLE"}, {Tipo::Double, "DOUBLE"},
    {Tipo::Currency, "CURRENCY"}, {Tipo::Date, "DATE"},     {Tipo::Time, "TIME"},
    {Tipo::YesNo, "YESNO"},       {Tipo::Memo, "MEMO"},
};

std::string Citado(std::string_view nombre)
{
    std::string s = "\"";
    for (char c : nombre) {
        if (c == '"')
            s += '"';
        s += c;
    }
    return s + '"';
}

std::string DeColumna(const std::string &nombre, const std::string &tipo,
                      const std::string &porDefecto, bool identidad)
{
    std::string s = Citado(nombre) + ' ' + tipo;
    if (identidad)
        s += " PRIMARY KEY AUTOINCREMENT";
    else if (!porDefecto.empty())
        s += " DEFAULT " + porDefecto;
    return s;
}

ColumnaDeclarada Declarada(const jet::Columna &c)
{
    ColumnaDeclarada d;
    d.nombre = c.nombre;
    d.tipo = TipoDeclarado(c);
    d.identidad = c.tipo == Tipo::Counter;
    if (c.tipo == Tipo::YesNo)
        d.porDefecto = "0"; // a Yes/No is never Null
    return d;
}

std::string Crear(const std::string &nombreCompleto, const std::vector<ColumnaDeclarada> &columnas)
{
    std::string sql = "CREATE TABLE " + nombreCompleto + " (";
    for (const ColumnaDeclarada &c : columnas) {
        if (&c != &columnas.front())
            sql += ", ";
        sql += DeColumna(c.nombre, c.tipo, c.porDefecto, c.identidad);
    }
    return sql + ")";
}

// An index that names a column which is gone cannot be made again.
bool Nombra(const std::string &indice, const std::string &columna)
{
    return indice.find(Citado(columna)) != std::string::npos;
}

// The engine can neither change nor drop a column, nor add an identity: the table is made anew
// with the rows copied in their order.
void Rehacer(Motor &motor, const std::string &esquema, const std::string &tabla,
             const std::vector<ColumnaDeclarada> &columnas, const std::string &quitada)
{
    const std::string temporal = tabla + "_nueva";
    const auto indices = motor.Indices(esquema, tabla);
    std::string copiadas;
    for (const ColumnaDeclarada &vieja : motor.Columnas(esquema, tabla)) {
        if (vieja.nombre == quitada)
            continue;
        copiadas += (copiadas.empty() ? "" : ", ") + Citado(vieja.nombre);
    }
    const std::string e = Citado(esquema) + '.';
    const bool propia = !motor.EnTransaccion();
    if (propia)
        motor.Empezar();
    try {
        motor.Ejecutar(Crear(e + Citado(temporal), columnas));
        motor.Ejecutar("INSERT INTO " + e + Citado(temporal) + " (" + copiadas + ") SELECT "
                       + copiadas + " FROM " + e + Citado(tabla) + " ORDER BY rowid");
        motor.Ejecutar("DROP TABLE " + e + Citado(tabla));
        motor.Ejecutar("ALTER TABLE " + e + Citado(temporal) + " RENAME TO " + Citado(tabla));
        for (std::string indice : indices) {
            if (!quitada.empty() && Nombra(indice, quitada))
                continue;
            // Stored without the database's name; it belongs in front of the index's own.
            const size_t donde = indice.find(" INDEX ");
            indice.insert(donde + 7, e);
            motor.Ejecutar(indice);
        }
        if (propia)
            motor.Confirmar();
    } catch (...) {
        if (propia)
            motor.Deshacer();
        throw;
    }
}

} // namespace

std::string TipoDeclarado(const jet::Columna &columna)
{
    if (columna.tipo == Tipo::Text)
        return "TEXT(" + std::to_string(columna.ancho ? columna.ancho : 255) + ")";
    for (const NombreDeTipo &n : Nombres)
        if (n.tipo == columna.tipo)
            return n.nombre;
    return "MEMO";
}

jet::Columna LeerTipoDeclarado(const std::string &nombre, const std::string &tipo)
{
    jet::Columna c;
    c.nombre = nombre;
    const std::string plegado = jet::Plegar(tipo);
    if (plegado.starts_with("text")) {
        c.tipo = Tipo::Text;
        c.ancho = 255;
        if (const size_t p = plegado.find('('); p != std::string::npos)
            std::from_chars(plegado.data() + p + 1, plegado.data() + plegado.size(), c.ancho);
        return c;
    }
    if (plegado == "integer") {
        c.tipo = Tipo::Long;
        return c;
    }
    for (const NombreDeTipo &n : Nombres)
        if (jet::Plegar(n.nombre) == plegado)
            c.tipo = n.tipo;
    return c;
}

void Base::Interno::Definir(const jet::Definicion &d)
{
    const jet::Tabla *tabla = catalogo.Buscar(d.tabla);
    const std::string propia = tabla ? tabla->nombre : d.tabla;
    const std::string nombre = Citado(esquema) + '.' + Citado(propia);
    if (d.clase == jet::Definicion::CrearTabla) {
        if (tabla)
            throw ErrorDeAlmacen(ErrorNum::TablaExiste, QString::fromStdString(d.tabla));
        std::vector<ColumnaDeclarada> columnas;
        for (const jet::Columna &c : d.columnas)
            columnas.push_back(Declarada(c));
        motor.Ejecutar(Crear(nombre, columnas));
    } else if (!tabla) {
        throw ErrorDeAlmacen(ErrorNum::TablaNoEncontrada, QString::fromStdString(d.tabla));
    } else if (d.clase == jet::Definicion::QuitarTabla) {
        motor.Ejecutar("DROP TABLE " + nombre);
    } else {
        const jet::Columna &pedida = d.columnas.front();
        auto columnas = motor.Columnas(esquema, propia);
        const auto i = std::ranges::find_if(columnas, [&](const ColumnaDeclarada &c) {
            return jet::Plegar(c.nombre) == jet::Plegar(pedida.nombre);
        });
        const bool esta = i != columnas.end();
        if (d.clase == jet::Definicion::AgregarColumna) {
            if (esta)
                throw ErrorDeAlmacen(ErrorNum::ColumnaExiste,
                                     QString::fromStdString(pedida.nombre));
            const ColumnaDeclarada nueva = Declarada(pedida);
            if (nueva.identidad) {
                columnas.push_back(nueva);
                Rehacer(motor, esquema, propia, columnas, {});
            } else {
                motor.Ejecutar("ALTER TABLE " + nombre + " ADD COLUMN "
                               + DeColumna(nueva.nombre, nueva.tipo, nueva.porDefecto, false));
            }
        } else {
            if (!esta)
                throw ErrorDeAlmacen(ErrorNum::NoEnLaColeccion,
                                     QString::fromStdString(pedida.nombre));
            const std::string columna = i->nombre;
            if (d.clase == jet::Definicion::CambiarColumna) {
                i->tipo = TipoDeclarado(pedida);
                Rehacer(motor, esquema, propia, columnas, {});
            } else {
                columnas.erase(i);
                Rehacer(motor, esquema, propia, columnas, columna);
            }
        }
    }
    ++*EscriturasDe(propia);
    cambios.clear();
    conClaves.clear();
    sinClaves.clear();
    directas.clear();
    catalogo.Olvidar();
}
