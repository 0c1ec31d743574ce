// Searches for a patient or a client by any two criteria at once.
#pragma once

#include "store/session.h"

#include <array>
#include <span>

namespace clients
{

/// What to search for.
enum class Search { Patients, Clientes };

/// One criterion.
struct SearchCriterion {
    int name;                // number of its text
    std::string_view clause; // "column LIKE ?", or just the column for a Yes/No
    bool siNo = false;       // takes 1 for Yes and 2 for No
    /// Condition implied by the clause that the store can look up, so that it need not read every
    /// row. Also takes one '?'.
    std::string_view shortcut = {};
    bool owner = false; // about a patient's owner rather than the patient
};
/// The criteria on offer.
std::span<const SearchCriterion> criteriaOf(Search search);

/// A criterion and the text to find, in which `*` matches anything. An empty text is ignored.
struct Condition {
    int criterion = 0; // index into criteriaOf()
    QString text;
};
using Conditions = std::array<Condition, 2>;

/// Text numbers of the titles of a row's cells, the first of which is the id.
std::span<const int> titlesOf(Search search);

/// The result of a search.
struct Finding {
    bool sought = false;                   // false: nothing was asked, or see `impediment`
    QString impediment;                    // message to show; rows found before stay
    std::vector<QList<store::Value>> rows; // cells in the order of titlesOf
    bool more = false;                     // rows beyond the limit were left out
};

/// All rows that meet every condition, sorted by name.
/// @throws StoreError. On purpose: searching clients by region always fails, since the criterion
/// names a column that does not exist
Finding find(Sesion &s, Search search, const Conditions &conditions);

/// Rows read while the user is still typing.
inline constexpr int RowsWhileTyping = 200;
/// The same for at most RowsWhileTyping rows; if more match, it is unspecified which are returned,
/// so that the store can stop early. A store failure ends up in `impediment`, so that no dialog
/// opens between two keys.
Finding findWhileTyping(Sesion &s, Search search, const Conditions &conditions);

/// Makes a client or patient the current one of the session: a patient with its owner, a client
/// with its first patient by name unless one of its own is already current.
/// @return false when it no longer exists
/// @throws StoreError
bool takeFound(Sesion &s, Search search, int id);

} // namespace clients
