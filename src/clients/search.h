// The search for a patient or a client by any two of their data at once.
#pragma once

#include "store/session.h"

#include <array>
#include <span>

namespace clients
{

/// What is looked for.
enum class Search { Patients, Clientes };

/// One thing to search by.
struct SearchCriterion {
    int name;                // its name in the string table
    std::string_view clause; // "column LIKE ?"; of a Yes/No the column alone
    bool siNo = false;       // takes 1 for Yes and 2 for No
    // Follows from the clause and can be looked up, so that the store need not read what cannot
    // meet it; also with one '?'.
    std::string_view shortcut = {};
    bool owner = false; // of a patient's owner, not of the patient
};
std::span<const SearchCriterion> criteriaOf(Search search);

/// A criterion with the text to look for, in which `*` stands for anything; an empty text asks for
/// nothing.
struct Condition {
    int criterion = 0; // position in criteriaOf
    QString text;
};
using Conditions = std::array<Condition, 2>;

/// Titles of the cells of a row, by number; the first is the id.
std::span<const int> titlesOf(Search search);

/// What was found.
struct Finding {
    bool sought = false;                   // false: nothing was asked, or `impediment` says why not
    QString impediment;                    // to be shown; the rows found before stay
    std::vector<QList<store::Value>> rows; // cells in the order of titlesOf
    bool more = false;                     // the limit left rows out
};

/// Rows that meet all conditions, all of them by name.
/// @throws StoreError, always for the clients' region: that criterion is kept as it is
Finding find(Sesion &s, Search search, const Conditions &conditions);

/// How many rows are read while the user still types.
inline constexpr int RowsWhileTyping = 200;
/// The same for so many rows at most; where there are more it is left open which ones, so that the
/// store can stop early. A failure of the store is an `impediment` here: no box opens between two
/// keys.
Finding findWhileTyping(Sesion &s, Search search, const Conditions &conditions);

/// Makes a client or patient found the one that the session works on: a patient with its owner, a
/// client with its first patient by name unless one of its own is current.
/// @return false when it is gone
bool takeFound(Sesion &s, Search search, int id);

} // namespace clients
