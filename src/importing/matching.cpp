#include "importing/matching.h"

#include <QRegularExpression>

using namespace clients;
using namespace importing;

namespace
{

constexpr int Kinds = 3; // telephone, e-mail, street

QString folded(const QString &t) { return t.simplified().toCaseFolded(); }

QString telephone(const QString &t)
{
    QString figures;
    for (const QChar c : t)
        if (c.isDigit())
            figures += c;
    return figures.size() >= 5 ? figures : folded(t);
}

QString keyOf(const ClientContact &c, const QString &rest) { return c.name + u'\n' + rest; }

QString kindsKey(const ClientContact &c, int kinds)
{
    return keyOf(c, QString(QChar(u'0' + kinds)));
}

void takeOut(QHash<QString, std::set<int>> &map, const QString &key, int who)
{
    const auto i = map.find(key);
    if (i == map.end())
        return;
    i->erase(who);
    if (i->empty())
        map.erase(i);
}

} // namespace

ClientContact importing::contactOf(const ClientRecord &record)
{
    static const QRegularExpression parts(QStringLiteral("[,;/]"));
    ClientContact c;
    c.name = folded(record.ayn);
    const auto add = [&c](int kind, QChar font, const QString &value) {
        if (value.isEmpty())
            return;
        c.contact << font + value;
        c.kinds |= 1 << kind;
    };
    for (const QString &t : (record.tel2 + u',' + record.telc2).split(parts))
        add(0, u't', telephone(t));
    for (const QString &t : record.email.split(parts))
        add(1, u'e', folded(t));
    add(2, u'd', folded(record.dir));
    return c;
}

void ClientsDirectory::add(int who, const ClientContact &c)
{
    for (const QString &sign : c.contact)
        m_bySign[keyOf(c, sign)].insert(who);
    m_byKinds[kindsKey(c, c.kinds)].insert(who);
}

void ClientsDirectory::remove(int who, const ClientContact &c)
{
    for (const QString &sign : c.contact)
        takeOut(m_bySign, keyOf(c, sign), who);
    takeOut(m_byKinds, kindsKey(c, c.kinds), who);
}

int ClientsDirectory::withSharedContact(const ClientContact &c) const
{
    int first = -1;
    for (const QString &sign : c.contact)
        if (const auto i = m_bySign.find(keyOf(c, sign)); i != m_bySign.end())
            first = first < 0 ? *i->begin() : std::min(first, *i->begin());
    return first;
}

int ClientsDirectory::either(const ClientContact &c) const
{
    int first = -1;
    for (int kinds = 0; kinds < 1 << Kinds; ++kinds) {
        if (kinds & c.kinds)
            continue;
        if (const auto i = m_byKinds.find(kindsKey(c, kinds)); i != m_byKinds.end())
            first = first < 0 ? *i->begin() : std::min(first, *i->begin());
    }
    return first;
}
