#include "clients/mail_domains.h"

#include "clients/reference_lists.h"

QString DominioDe(const QString &direcciones)
{
    const qsizetype arroba = direcciones.lastIndexOf(u'@');
    if (arroba < 0)
        return {};
    const QString resto = direcciones.sliced(arroba + 1);
    qsizetype fin = 0;
    while (fin < resto.size() && !resto[fin].isSpace() && resto[fin] != u',' && resto[fin] != u';')
        ++fin;
    return resto.first(fin);
}

QStringList DominiosConocidos(Sesion &s)
{
    QStringList dominios;
    Recordset r = s.clientes->OpenSnapshot("select nom from email order by nom");
    for (; !r.EOF_(); r.MoveNext())
        dominios << r[0].toText();
    return dominios;
}

QString CompletarDominio(Sesion &s, const QString &texto)
{
    const QString comienzo = DominioDe(texto);
    if (comienzo.isEmpty() || !texto.endsWith(comienzo))
        return {};
    return s.clientes
        ->Leer("select top 1 nom from email where nom like ? order by nom",
               PatronDePrefijo(comienzo))
        .toText();
}

bool AsentarCorreo(Sesion &s, const QString &direcciones, int idc)
{
    Lote lote(s);
    const QString dominio = s.clientes->Recortado("email", "nom", DominioDe(direcciones));
    if (!dominio.isEmpty()
        && s.clientes->Leer("select nom from email where nom = ?", dominio).EsNulo())
        s.clientes->Execute("insert into email (nom) values (?)", dominio);
    // What holds no "@" is no address that a mail could go to.
    const bool faltaba =
        idc != 0 && direcciones.contains(u'@')
        && s.clientes->Leer("select FaltaMail from clientes where idc = ?", idc).toBool();
    if (faltaba)
        s.clientes->Execute("update clientes set FaltaMail = 0 where idc = ?", idc);
    lote.Confirmar();
    return faltaba;
}
