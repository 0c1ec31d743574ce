// Deciding whether a client in a file is one that is already known.
#pragma once

#include "clients/registry.h"

#include <QHash>
#include <set>

namespace importing
{

/// What identifies a client: the name and every telephone number, e-mail address and street
/// address. Letter case, spaces and punctuation in telephone numbers are ignored.
struct ClientContact {
    QString name;
    QStringList contact; // each preceded by a letter for its kind
    int kinds = 0;       // one bit for each kind present
};
/// Extracts what identifies a client.
ClientContact contactOf(const clients::ClientRecord &record);

/// An index of clients by what identifies them. A search takes a few hash look-ups, however many
/// clients share a name.
class ClientsDirectory
{
public:
    /// Adds a client under the number @p who, which is what searches return.
    void add(int who, const ClientContact &c);
    /// Removes a client; @p c must be what it was added with.
    void remove(int who, const ClientContact &c);

    /// The lowest number with the same name and a common telephone, e-mail or street address; -1
    /// for none.
    int withSharedContact(const ClientContact &c) const;
    /// The lowest number with the same name and nothing that could differ: no kind of contact is
    /// known on both sides. -1 for none.
    int either(const ClientContact &c) const;

private:
    QHash<QString, std::set<int>> m_bySign;
    QHash<QString, std::set<int>> m_byKinds;
};

} // namespace importing
