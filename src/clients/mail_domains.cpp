#include "clients/mail_domains.h"

#include "clients/reference_lists.h"

using namespace clients;

QString clients::domainOf(const QString &addresses)
{
    const qsizetype at = addresses.lastIndexOf(u'@');
    if (at < 0)
        return {};
    const QString rest = addresses.sliced(at + 1);
    qsizetype end = 0;
    while (end < rest.size() && !rest[end].isSpace() && rest[end] != u',' && rest[end] != u';')
        ++end;
    return rest.first(end);
}

QStringList clients::knownDomains(Sesion &s)
{
    QStringList domains;
    Recordset r = s.clientes->OpenSnapshot("select nom from email order by nom");
    for (; !r.EOF_(); r.MoveNext())
        domains << r[0].toText();
    return domains;
}

QString clients::completeDomain(Sesion &s, const QString &text)
{
    const QString beginning = domainOf(text);
    if (beginning.isEmpty() || !text.endsWith(beginning))
        return {};
    return s.clientes
        ->read("select top 1 nom from email where nom like ? order by nom",
               prefixPattern(beginning))
        .toText();
}

bool clients::settleMail(Sesion &s, const QString &addresses, int idc)
{
    Lote lote(s);
    const QString domain = s.clientes->trimmed("email", "nom", domainOf(addresses));
    if (!domain.isEmpty()
        && s.clientes->read("select nom from email where nom = ?", domain).isNull())
        s.clientes->Execute("insert into email (nom) values (?)", domain);
    // Without an "@" it is no address to send mail to.
    const bool wasMissing =
        idc != 0 && addresses.contains(u'@')
        && s.clientes->read("select FaltaMail from clientes where idc = ?", idc).toBool();
    if (wasMissing)
        s.clientes->Execute("update clientes set FaltaMail = 0 where idc = ?", idc);
    lote.commit();
    return wasMissing;
}
