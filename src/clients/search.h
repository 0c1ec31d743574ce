// The search for a patient or a client by any two of their data at once.
#pragma once

#include "store/session.h"

#include <array>
#include <span>

/// What is looked for.
enum class Busqueda { Mascotas, Clientes };

/// One thing to search by.
struct CriterioDeBusqueda {
    int nombre;                // its name in the string table
    std::string_view clausula; // "column LIKE ?"; of a Yes/No the column alone
    bool siNo = false;         // takes 1 for Yes and 2 for No
    // Follows from the clause and can be looked up, so that the store need not read what cannot
    // meet it; also with one '?'.
    std::string_view atajo = {};
    bool delDueno = false; // of a patient's owner, not of the patient
};
std::span<const CriterioDeBusqueda> CriteriosDe(Busqueda busqueda);

/// A criterion with the text to look for, in which `*` stands for anything; an empty text asks for
/// nothing.
struct Condicion {
    int criterio = 0; // position in CriteriosDe
    QString texto;
};
using Condiciones = std::array<Condicion, 2>;

/// Titles of the cells of a row, by number; the first is the id.
std::span<const int> TitulosDe(Busqueda busqueda);

/// What was found.
struct Hallazgo {
    bool buscado = false;            // false: nothing was asked, or `impedimento` says why not
    QString impedimento;             // to be shown; the rows found before stay
    std::vector<QList<Valor>> filas; // cells in the order of TitulosDe
    bool hayMas = false;             // the limit left rows out
};

/// Rows that meet all conditions, all of them by name.
/// @throws ErrorDeAlmacen, always for the clients' region: that criterion is kept as it is
Hallazgo Buscar(Sesion &s, Busqueda busqueda, const Condiciones &condiciones);

/// How many rows are read while the user still types.
inline constexpr int FilasAlTeclear = 200;
/// The same for so many rows at most; where there are more it is left open which ones, so that the
/// store can stop early. A failure of the store is an `impedimento` here: no box opens between two
/// keys.
Hallazgo BuscarAlTeclear(Sesion &s, Busqueda busqueda, const Condiciones &condiciones);

/// Makes a client or patient found the one that the session works on: a patient with its owner, a
/// client with its first patient by name unless one of its own is current.
/// @return false when it is gone
bool TomarHallado(Sesion &s, Busqueda busqueda, int id);
