// Telling whether a client in a file is one that is known already.
#pragma once

#include "clients/registry.h"

#include <QHash>
#include <set>

namespace importing
{

/// What a client is known by: the name, and each telephone, address for mail and street address.
/// Letter case, blanks and the signs in telephones do not count.
struct ClientContact {
    QString name;
    QStringList contact; // a letter for the kind in front of each
    int kinds = 0;       // a bit for each kind that is there
};
ClientContact contactOf(const clients::ClientRecord &record);

/// Clients by what they are known by. Every look-up is a few hash look-ups, however many clients
/// bear the same name.
class ClientsDirectory
{
public:
    void add(int who, const ClientContact &c);
    void remove(int who, const ClientContact &c);

    /// The first who has the name and a telephone, mail or street address in common; -1 for nobody.
    int withSharedContact(const ClientContact &c) const;
    /// The first who has the name and whom nothing tells apart: no kind is known on both sides.
    int either(const ClientContact &c) const;

private:
    QHash<QString, std::set<int>> m_bySign;
    QHash<QString, std::set<int>> m_byKinds;
};

} // namespace importing
