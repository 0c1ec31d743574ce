#include "contact/contact.h"

#include "store/lookups.h"

QString DomicilioCliente(Sesion &s, int idc)
{
    Recordset &c = s.listas.clientes;
    c.FindFirst("idc = ?", idc);
    if (c.NoMatch())
        return {};
    const QString calle = c["dir"].toText();
    const int loc = c["loc"].toInt(), dep = c["dep"].toInt();
    const QString cp = c["codp2"].toText();
    QStringList partes{calle, LeerCampo(s, "clientes", "cllocalidad", loc, "nom"),
                       LeerCampo(s, "clientes", "cldepartamento", dep, "nom"),
                       cp.isEmpty() ? QString() : QStringLiteral("CP: ") + cp};
    partes.removeAll(QString());
    return partes.join(QStringLiteral(", "));
}

QString TelefonosCliente(Sesion &s, int idc)
{
    QStringList telefonos{LeerCampo(s, "clientes", "clientes", idc, "tel2"),
                          LeerCampo(s, "clientes", "clientes", idc, "telc2")};
    telefonos.removeAll(QString());
    return telefonos.join(QStringLiteral(" / "));
}

QString DireccionCliente(Sesion &s, int idc)
{
    const QString direcciones = LeerCampo(s, "clientes", "clientes", idc, "email");
    return direcciones.contains(u'@') ? direcciones : QString();
}
