// The six small lists of the registry: regions, sub-regions, marketing sources, species, breeds and
// coats. Three of them complete what is typed and learn what this clinic uses most.
#pragma once

#include "store/session.h"

namespace clients
{

enum class List { Region, Subregion, Marketing, Species, Breed, Coat };

/// One entry. `codigo` is the telephone area code of a region or the postal code of a sub-region;
/// `padre` the region of a sub-region or the species of a breed. Empty and 0 elsewhere.
struct Entry {
    int id = 0;
    QString nom = {};
    QString code = {};
    int parent = 0;
};

/// How a list is kept.
struct ListTable {
    List list;
    std::string_view table;
    std::string_view codeColumn;   // "" where entries have none
    std::string_view parentColumn; // likewise
    std::string_view counter;      // of the settings row
    int highestId;                 // that may be given out
};
const ListTable &tableOf(List list);

/// Adds an entry under a new id: the only one who does. Texts that are too long are cut.
/// @return the id @throws StoreError 6 when the ids are used up
int addEntry(Sesion &s, List list, const Entry &entry);

/// All entries by name.
std::vector<Entry> loadList(Sesion &s, List list);
/// The entry with that id, nullopt when there is none.
std::optional<Entry> entryById(Sesion &s, List list, int id);
/// The entry with exactly that name, letter case aside.
std::optional<Entry> entryByName(Sesion &s, List list, const QString &nom);
/// The region of a sub-region or the species of a breed, out of the session's lists: no query.
std::optional<Entry> parentOf(Sesion &s, List list, const Entry &entry);

/// What completes a typed text: the entry used most among those that begin with it, and the names
/// of the others, most used first. Of use for Region, Subregion and Raza.
struct Completed {
    std::optional<Entry> found;
    QStringList other;
};
Completed complete(Sesion &s, List list, const QString &text);
/// The hint that goes with it: what was found and what comes with it, or how to enter a new one.
QString completedNotice(Sesion &s, List list, const Completed &c);

/// Whether a text reads as a number: digits with marks between them, a sign in front, and no
/// letter.
bool isNumeric(const QString &text);
/// Whether a text cannot be a name because it has no letter; an empty one is no name yet.
bool withoutLetters(const QString &text);

/// The pattern that finds texts that begin with this one, whatever characters it is made of:
/// `*`, `?`, `#` and `[` stand for themselves.
QString prefixPattern(const QString &text);
/// The same for a search, where a typed `*` stands for anything.
QString patternWithStars(const QString &text);

/// The id of a region by name, for saving a client: a new one is added, a known one takes over the
/// code typed, if any. @return 0 for an empty name
/// @throws StoreError 6 when its identifiers are used up
int ensureRegion(Sesion &s, const QString &nom, const QString &ctel);
/// The same for a sub-region: a new one gets the region given; a known one keeps its own.
int ensureSubregion(Sesion &s, const QString &nom, const QString &cp, int dep);
/// The same for a breed, with its species (0 if none was chosen); a known one stays as it is.
int ensureBreed(Sesion &s, const QString &nom, int esp);
/// Another species for a breed.
void changeBreedSpecies(Sesion &s, int breed, int esp);

} // namespace clients

/// Counts one more use of an entry; the count stops at 32000.
void SubirRanking(Sesion &s, std::string_view table, int id);
