// The quick find: any piece of an owner or an animal, answered while it is typed.
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

/// What the quick find shows of all that matches.
struct QuickAnswer {
    std::vector<FoundQuick> rows; // animals of one owner stand together
    int total = 0;                // matches, shown or not
};

/// All owners and animals as short folded texts, a few megabytes for a full clinic. What is shown
/// of a match is read from the tables.
class QuickIndex
{
public:
    /// Reads the tables if they were written since the last time.
    /// @throws StoreError
    void bringUpToDate(Sesion &s);

    /// Every word of the text must be found in the owner, the animal, its chip or, for a number,
    /// in the digits of a telephone; a number of fewer than five digits is also an id. Letter case
    /// and accents do not count. First what begins with the words, living animals before dead ones.
    QuickAnswer find(Sesion &s, const QString &text, int count) const;

    size_t bytes() const;

private:
    // Places in m_texto.
    struct Piece {
        quint32 from = 0;
        quint16 length = 0;
    };
    struct Client {
        int idc = 0;
        Piece name;
        Piece telephones;  // digits, each number behind a blank
        quint32 first = 0; // its animals in m_mascotas
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
    std::vector<Patient> m_patients; // owner by owner
    qint64 m_version = -1;
};

} // namespace clients
