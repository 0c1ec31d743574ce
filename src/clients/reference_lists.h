// The registry's six small lists: regions, sub-regions, marketing sources, species, breeds and
// coats. Three of them complete what is typed and rank entries by how often this clinic uses them.
#pragma once

#include "store/session.h"

namespace clients
{

/// The lists.
enum class List { Region, Subregion, Marketing, Species, Breed, Coat };

/// One entry. `code` is the telephone area code of a region or the postal code of a sub-region;
/// `parent` is the region of a sub-region or the species of a breed. Otherwise they are empty and
/// 0.
struct Entry {
    int id = 0;
    QString nom = {};
    QString code = {};
    int parent = 0;
};

/// Where a list is stored.
struct ListTable {
    List list;
    std::string_view table;
    std::string_view codeColumn;   // "" if entries have none
    std::string_view parentColumn; // likewise
    std::string_view counter;      // column of the settings row with the last id
    int highestId;                 // highest id that may be assigned
};
/// The table of a list.
const ListTable &tableOf(List list);

/// Adds an entry under a new id; no other function does. Texts that are too long are cut.
/// @return the id
/// @throws StoreError 6 when the ids are used up
int addEntry(Sesion &s, List list, const Entry &entry);

/// All entries, sorted by name.
/// @throws StoreError
std::vector<Entry> loadList(Sesion &s, List list);
/// The entry with that id, nullopt when there is none.
/// @throws StoreError
std::optional<Entry> entryById(Sesion &s, List list, int id);
/// The entry with exactly that name, ignoring case.
/// @throws StoreError
std::optional<Entry> entryByName(Sesion &s, List list, const QString &nom);
/// The region of a sub-region or the species of a breed, from the session's cached lists.
std::optional<Entry> parentOf(Sesion &s, List list, const Entry &entry);

/// What completes a typed text: the most used entry among those that begin with it, and the names
/// of the others, most used first. Meant for Region, Subregion and Breed.
struct Completed {
    std::optional<Entry> found;
    QStringList other;
};
/// Completes a typed text; nothing is found for an empty one.
/// @throws StoreError
Completed complete(Sesion &s, List list, const QString &text);
/// The hint for a completion: what was found and what comes with it, or how to enter a new one.
QString completedNotice(Sesion &s, List list, const Completed &c);

/// Whether a text reads as a number: digits with punctuation between them, an optional sign, no
/// letter.
bool isNumeric(const QString &text);
/// Whether a text cannot be a name because it has no letter. False for an empty text.
bool withoutLetters(const QString &text);

/// A LIKE pattern for texts that begin with this one; `*`, `?`, `#` and `[` are taken literally.
QString prefixPattern(const QString &text);
/// The same for a search, except that a typed `*` matches anything.
QString patternWithStars(const QString &text);

/// The id of the region of that name, adding it if it is new. A known one takes over the area code,
/// if one was typed.
/// @return 0 for an empty name
/// @throws StoreError 6 when the ids are used up
int ensureRegion(Sesion &s, const QString &nom, const QString &ctel);
/// The same for a sub-region. A new one is put in the region @p dep; a known one keeps its own.
int ensureSubregion(Sesion &s, const QString &nom, const QString &cp, int dep);
/// The same for a breed of the species @p esp, 0 if none was chosen; a known one is left unchanged.
int ensureBreed(Sesion &s, const QString &nom, int esp);
/// Assigns a breed to another species.
/// @throws StoreError
void changeBreedSpecies(Sesion &s, int breed, int esp);

} // namespace clients

/// Counts one more use of an entry, up to 32000.
/// @throws StoreError
void SubirRanking(Sesion &s, std::string_view table, int id);
