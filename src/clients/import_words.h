// What the words of a register mean, in Spanish, Portuguese and English at once: titles of columns,
// dates, sexes, species.
#pragma once

#include <QDate>
#include <QStringList>
#include <optional>

/// What a column of a file holds. Names on screen stand in text 9750 in this order.
enum class Dato {
    Nada,
    Cliente, // the name, or what goes behind the surname
    Apellido,
    IdCliente, // number of the owner in the file: tells which rows are of one owner, is not kept
    Direccion,
    Subregion,
    Region,
    CodigoPostal,
    CodigoDeArea,
    Telefono,
    Movil,
    Email,
    NotasDeCliente,
    Mascota,
    IdMascota, // number of the animal in the file: tells rows of one animal apart, is not kept
    Especie,
    Raza,
    Pelaje,
    Marcas,
    Chip,
    Nacimiento,
    Peso,
    Sexo,
    Castrado,
    Pedigri,
    Fallecido,
    NotasDeMascota,
};
inline constexpr int CuantosDatos = int(Dato::NotasDeMascota) + 1;

/// Whether a column tells of the animal rather than of its owner.
constexpr bool EsDeMascota(Dato d) { return d >= Dato::Mascota; }

/// A text without accents, letter case, blanks and signs: "Animal's Name" and "animals_name" are
/// one. Letters of other scripts stay.
QString EnClave(const QString &texto);

/// What each column seems to hold by its title; no datum twice.
QList<Dato> ReconocerTitulos(const QStringList &titulos);

/// The name of a datum on the command line ("mascota"), and the way back. Any title that is
/// recognised names it too.
QString NombreDeDato(Dato dato);
std::optional<Dato> DatoPorNombre(const QString &nombre);

enum class OrdenDeFecha { DiaMes, MesDia };

/// A day in figures (ISO, or day, month and year by @p orden with '/', '-', '.' or blanks between;
/// when only the other order gives a day, that one), with the month's name before or behind the
/// day, or a bare year, which is its 1 January. Years of two figures are 2000-2029 and 1930-1999. A
/// time behind it is dropped. @return an invalid day when it is none
QDate LeerFecha(const QString &texto, OrdenDeFecha orden);

/// What a text tells of the order in which its file writes day and month.
enum class PruebaDeOrden { Ninguna, DiaMes, MesDia, Ambigua };
PruebaDeOrden OrdenQuePrueba(const QString &texto);

/// Sex as the registry counts it: 0 male, 1 female, 2 and 3 the same castrated; nullopt for a word
/// that is not known.
std::optional<int> LeerSexo(const QString &texto);

/// Yes or No; nullopt for a word that is not known.
std::optional<bool> LeerSiNo(const QString &texto);

/// The species that a common word means (1 canine, 2 feline, 3 equine), 0 for any other word.
int EspecieConocida(const QString &texto);

/// The unit behind a weight, or in the title of a column of weights: "kg", "lb", "g"; "" for none.
QString UnidadEscrita(const QString &texto);

/// A weight, with a point or a comma, whatever unit is behind it. nullopt when it is none.
std::optional<double> LeerPeso(const QString &texto);
