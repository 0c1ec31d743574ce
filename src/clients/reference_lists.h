// The six small lists of the registry: regions, sub-regions, marketing sources, species, breeds and
// coats. Three of them complete what is typed and learn what this clinic uses most.
#pragma once

#include "store/session.h"

enum class Lista { Region, Subregion, Marketing, Especie, Raza, Pelaje };

/// One entry. `codigo` is the telephone area code of a region or the postal code of a sub-region;
/// `padre` the region of a sub-region or the species of a breed. Empty and 0 elsewhere.
struct Entrada {
    int id = 0;
    QString nom;
    QString codigo;
    int padre = 0;
};

/// All entries by name.
std::vector<Entrada> CargarLista(Sesion &s, Lista lista);
/// The entry with that id, nullopt when there is none.
std::optional<Entrada> EntradaPorId(Sesion &s, Lista lista, int id);
/// The entry with exactly that name, letter case aside.
std::optional<Entrada> EntradaPorNombre(Sesion &s, Lista lista, const QString &nom);
/// The region of a sub-region or the species of a breed, out of the session's lists: no query.
std::optional<Entrada> PadreDe(Sesion &s, Lista lista, const Entrada &entrada);

/// What completes a typed text: the entry used most among those that begin with it, and the names
/// of the others, most used first. Of use for Region, Subregion and Raza.
struct Completado {
    std::optional<Entrada> hallada;
    QStringList otras;
};
Completado Completar(Sesion &s, Lista lista, const QString &texto);
/// The hint that goes with it: what was found and what comes with it, or how to enter a new one.
QString AvisoDeCompletado(Sesion &s, Lista lista, const Completado &c);

/// Whether a text reads as a number: digits with marks between them, a sign in front, and no
/// letter.
bool EsNumerico(const QString &texto);
/// Whether a text cannot be a name because it has no letter; an empty one is no name yet.
bool SinLetras(const QString &texto);

/// The pattern that finds texts that begin with this one, whatever characters it is made of:
/// `*`, `?`, `#` and `[` stand for themselves.
QString PatronDePrefijo(const QString &texto);
/// The same for a search, where a typed `*` stands for anything.
QString PatronConAsteriscos(const QString &texto);

/// Counts one more use of an entry; the count stops at 32000.
void SubirRanking(Sesion &s, std::string_view tabla, int id);

/// The id of a region by name, for saving a client: a new one is added, a known one takes over the
/// code typed, if any. @return 0 for an empty name
/// @throws ErrorDeAlmacen 3163 when its identifiers are used up
int AsegurarRegion(Sesion &s, const QString &nom, const QString &ctel);
/// The same for a sub-region: a new one gets the region given; a known one keeps its own.
int AsegurarSubregion(Sesion &s, const QString &nom, const QString &cp, int dep);
/// The same for a breed, with its species (0 if none was chosen); a known one stays as it is.
int AsegurarRaza(Sesion &s, const QString &nom, int esp);
/// Another species for a breed.
void CambiarEspecieDeRaza(Sesion &s, int raza, int esp);
