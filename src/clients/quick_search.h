// The quick search: finds any part of an owner or an animal while it is being typed.
#pragma once

#include "store/session.h"

#include <string>

namespace clients
{

/// An animal with its owner, or an owner without animals (`idm` 0).
struct FoundQuick {
    int idc = 0;
    int idm = 0;
    QString owner;
    QString patient;
    QString telephones;
    bool dec = false;
};

/// What the quick search shows of its matches.
struct QuickAnswer {
    std::vector<FoundQuick> rows; // animals of one owner are adjacent
    int total = 0;                // number of matches, shown or not
};

/// All owners and animals as short folded texts, a few megabytes for a full clinic. The details of
/// a match are read from the tables.
class QuickIndex
{
public:
    /// Rebuilds the index if the tables have been written since the last call.
    /// @throws StoreError
    void bringUpToDate(Sesion &s);

    /// Finds what matches every word of the text, ignoring case and accents: in the owner's name,
    /// the animal's name or its chip or, for a number, in a telephone; a number of fewer than five
    /// digits also matches an id. Matches at the beginning of a word come first, and living animals
    /// before dead ones.
    /// @param count how many matches to return at most
    /// @throws StoreError
    QuickAnswer find(Sesion &s, const QString &text, int count) const;

    /// Memory used by the index.
    size_t bytes() const;

private:
    /// A range of m_text.
    struct Piece {
        quint32 from = 0;
        quint16 length = 0;
    };
    struct Client {
        int idc = 0;
        Piece name;
        Piece telephones;  // digits, each number behind a blank
        quint32 first = 0; // its animals in m_patients: [first, end)
        quint32 end = 0;
    };
    struct Patient {
        int idm = 0;
        Piece name;
        Piece chip;
        bool dec = false;
    };
    struct Hit;

    Piece save(const std::string &text);
    std::string_view text(Piece t) const { return {m_text.data() + t.from, t.length}; }
    std::vector<Hit> findHits(const QString &text) const;

    std::string m_text;
    std::vector<Client> m_clients;
    std::vector<Patient> m_patients; // grouped by owner
    qint64 m_version = -1;
};

} // namespace clients
