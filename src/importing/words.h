// Understanding the words of an imported file, in Spanish, Portuguese and English at once: column
// titles, dates, sexes, species.
#pragma once

#include <QDate>
#include <QStringList>
#include <optional>

namespace importing
{

/// What a column of a file holds. Text 9750 lists the names on screen in this order.
enum class Datum {
    Nothing,
    Client, // the full name, or the first name when there is a surname column
    Surname,
    IdClient, // owner's number in the file: groups the rows of one owner, is not stored
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
    IdPatient, // animal's number in the file: groups the rows of one animal, is not stored
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

/// Whether a column is about the animal rather than its owner.
constexpr bool isOfPatient(Datum d) { return d >= Datum::Patient; }

/// A text in lower case and without accents, spaces and punctuation, for comparing: "Animal's Name"
/// and "animals_name" give the same key. Letters of other scripts are kept.
QString inKey(const QString &text);

/// What each column seems to hold, judging by its title; no datum twice.
QList<Datum> recogniseTitles(const QStringList &titles);

/// The name of a datum on the command line, such as "mascota".
QString datumName(Datum datum);
/// The datum with this name or with any of the titles that recogniseTitles knows; nullopt for none.
std::optional<Datum> datumByName(const QString &name);

enum class DateOrder { DayMonth, MonthDay };

/// Parses a date: ISO; numeric in the given order, with '/', '-', '.' or spaces between the numbers
/// (the other order is tried when only that one gives a date); with the month's name before or
/// after the day; or a bare year, which means its 1 January. Two-digit years are 2000-2029 and
/// 1930-1999. A time after the date is ignored.
/// @return an invalid date when the text is none
QDate readDate(const QString &text, DateOrder order);

/// What a date says about the order of day and month in its file. None: nothing, because it is no
/// short numeric date, or because both orders give the same day.
enum class OrderTest { None, DayMonth, MonthDay, Ambiguous };
/// Checks which order of day and month the date in a text shows.
OrderTest orderThatTests(const QString &text);

/// Sex as it is stored: 0 male, 1 female, 2 and 3 the same neutered; nullopt for an unknown word.
std::optional<int> readSex(const QString &text);

/// Yes or No; an empty text is No. nullopt for an unknown word.
std::optional<bool> readYesNo(const QString &text);

/// The species that a common word stands for (1 canine, 2 feline, 3 equine), 0 for any other word.
int knownSpecies(const QString &text);

/// The unit after a weight or in the title of a weight column: "kg", "lb" or "g"; "" for none.
QString writtenUnit(const QString &text);

/// Parses a weight with a decimal point or comma, ignoring any unit; nullopt when it is not one.
std::optional<double> readWeight(const QString &text);

} // namespace importing
