// What the words of a register mean, in Spanish, Portuguese and English at once: titles of columns,
// dates, sexes, species.
#pragma once

#include <QDate>
#include <QStringList>
#include <optional>

namespace importing
{

/// What a column of a file holds. Names on screen stand in text 9750 in this order.
enum class Datum {
    Nothing,
    Client, // the name, or what goes behind the surname
    Surname,
    IdClient, // number of the owner in the file: tells which rows are of one owner, is not kept
    Address,
    Subregion,
    Region,
    PostalCode,
    AreaCode,
    Telephone,
    Mobile,
    Email,
    ClientNotes,
    Patient,
    IdPatient, // number of the animal in the file: tells rows of one animal apart, is not kept
    Species,
    Breed,
    Coat,
    Marks,
    Chip,
    Birth,
    Weight,
    Sex,
    Neutered,
    Pedigree,
    Deceased,
    PatientNotes,
};
inline constexpr int DatumCount = int(Datum::PatientNotes) + 1;

/// Whether a column tells of the animal rather than of its owner.
constexpr bool isOfPatient(Datum d) { return d >= Datum::Patient; }

/// A text without accents, letter case, blanks and signs: "Animal's Name" and "animals_name" are
/// one. Letters of other scripts stay.
QString inKey(const QString &text);

/// What each column seems to hold by its title; no datum twice.
QList<Datum> recogniseTitles(const QStringList &titles);

/// The name of a datum on the command line ("mascota"), and the way back. Any title that is
/// recognised names it too.
QString datumName(Datum datum);
std::optional<Datum> datumByName(const QString &name);

enum class DateOrder { DayMonth, MonthDay };

/// A day in figures (ISO, or day, month and year by @p order with '/', '-', '.' or blanks between;
/// when only the other order gives a day, that one), with the month's name before or behind the
/// day, or a bare year, which is its 1 January. Years of two figures are 2000-2029 and 1930-1999. A
/// time behind it is dropped. @return an invalid day when it is none
QDate readDate(const QString &text, DateOrder order);

/// What a text tells of the order in which its file writes day and month.
enum class OrderTest { None, DayMonth, MonthDay, Ambiguous };
OrderTest orderThatTests(const QString &text);

/// Sex as the registry counts it: 0 male, 1 female, 2 and 3 the same castrated; nullopt for a word
/// that is not known.
std::optional<int> readSex(const QString &text);

/// Yes or No; nullopt for a word that is not known.
std::optional<bool> readYesNo(const QString &text);

/// The species that a common word means (1 canine, 2 feline, 3 equine), 0 for any other word.
int knownSpecies(const QString &text);

/// The unit behind a weight, or in the title of a column of weights: "kg", "lb", "g"; "" for none.
QString writtenUnit(const QString &text);

/// A weight, with a point or a comma, whatever unit is behind it. nullopt when it is none.
std::optional<double> readWeight(const QString &text);

} // namespace importing
