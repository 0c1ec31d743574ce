// What the dialect hands to the store: a statement of the rules, ready for the engine.
#pragma once

#include "store/value.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace jet
{

struct Columna {
    std::string nombre;
    Tipo tipo = Tipo::Ninguno;
    int ancho = 0; // of TEXT(n); 0 otherwise
};

struct Tabla {
    std::string nombre; // in the file's own letter case
    std::vector<Columna> columnas;
};

/// The tables of one database, found without regard to letter case (ñ and Ñ included).
class Catalogo
{
public:
    virtual ~Catalogo() = default;
    /// @return nullptr when the database has no such table. The pointer lives until the next
    ///         statement that defines something.
    virtual const Tabla *Buscar(std::string_view nombre) const = 0;
};

/// Where the value of the engine's n-th parameter comes from.
struct Parametro {
    enum Origen {
        Dado, // the caller's value number `indice`, from 0
        Hoy,  // the session's day, for Date()
        Hora, // the session's time of day, for Time()
        Ahora // both, for Now()
    };
    Origen origen = Dado;
    int indice = 0;
};

/// One column of the rows that a query gives.
struct ColumnaDeSalida {
    std::string nombre;  // as asked for: the alias, or the column's own name
    std::string tabla;   // name or alias of the table in the FROM clause, "" for an expression
    std::string columna; // the table's column behind it, "" for an expression
    Tipo tipo = Tipo::Ninguno;
    int ancho = 0;
};

/// A table of the FROM clause whose rows an updatable recordset can write back.
struct FuenteDeFilas {
    std::string tabla;      // the table's own name
    std::string alias;      // the name that the statement uses for it
    int columnaDeClave = 0; // position of the row's key among the engine's result columns
};

/// A change of the schema, carried out by the database and not by one engine statement.
struct Definicion {
    enum Clase { CrearTabla, AgregarColumna, CambiarColumna, QuitarColumna, QuitarTabla };
    Clase clase = CrearTabla;
    std::string tabla;
    std::vector<Columna> columnas; // all of a new table, else the one column meant
};

struct Traduccion {
    enum Clase { Consulta, Cambio, Define };
    Clase clase = Consulta;
    std::string sql; // engine SQL; empty for Define
    std::vector<Parametro> parametros;
    int valoresDados = 0; // how many '?' the statement holds
    std::vector<ColumnaDeSalida> columnas;
    std::vector<FuenteDeFilas> fuentes; // only when asked for
    std::string tablaEscrita;           // of a Cambio
    Definicion definicion;              // of a Define
};

/// Translates one statement.
/// @param sql       the rules' dialect, UTF-8, '?' where a value goes
/// @param catalogo  tables of the database that the statement runs on
/// @param esquema   the engine's name of that database; every table is qualified with it
/// @param conClaves also select the key of every base table's row, behind the asked columns
/// @throws ErrorDeAlmacen 3075 with line, column and a caret for what the dialect does not take,
///         3078 for an unknown table, 3061 for a name that is no column
Traduccion Traducir(std::string_view sql, const Catalogo &catalogo, std::string_view esquema,
                    bool conClaves = false);

/// Parses alone, without looking at any table. @throws as Traducir, 3075 only
void Revisar(std::string_view sql);

} // namespace jet
