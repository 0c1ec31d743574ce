#include "contact/contact.h"

#include "store/lookups.h"

QString DomicilioCliente(Sesion &s, int idc)
{
    const auto field = [&](std::string_view column) {
        return s.lists.clientes.lookUp("idc = ?", idc, column).value_or(store::Value());
    };
    const QString street = field("dir").toText();
    const int loc = field("loc").toInt(), dep = field("dep").toInt();
    const QString cp = field("codp2").toText();
    QStringList parts{street, LeerCampo(s, "clientes", "cllocalidad", loc, "nom"),
                      LeerCampo(s, "clientes", "cldepartamento", dep, "nom"),
                      cp.isEmpty() ? QString() : QStringLiteral("CP: ") + cp};
    parts.removeAll(QString());
    return parts.join(QStringLiteral(", "));
}

QString TelefonosCliente(Sesion &s, int idc)
{
    QStringList telephones{LeerCampo(s, "clientes", "clientes", idc, "tel2"),
                           LeerCampo(s, "clientes", "clientes", idc, "telc2")};
    telephones.removeAll(QString());
    return telephones.join(QStringLiteral(" / "));
}

QString DireccionCliente(Sesion &s, int idc)
{
    const QString addresses = LeerCampo(s, "clientes", "clientes", idc, "email");
    return addresses.contains(u'@') ? addresses : QString();
}

void contact::addToList(Sesion &s, const DeliveryTable &list, int idm, int ida,
                        std::optional<int> dos)
{
    const int idc = LeerCampo(s, "clientes", "mascotas", idm, "idc").toInt();
    const auto cut = [&](std::string_view column, const QString &text) -> store::Value {
        return s.rep97->trimmed(list.table, column, text);
    };
    std::vector<store::Value> values{
        cut("mas", LeerCampo(s, "clientes", "mascotas", idm, "nom")),
        cut(list.product, LeerCampo(s, "finanzas", "articulos", ida, "nom")),
        cut("pro", LeerCampo(s, "clientes", "clientes", idc, "ayn")),
        cut("dir", DomicilioCliente(s, idc)),
        cut("tel", TelefonosCliente(s, idc)),
    };
    if (dos)
        values.emplace_back(*dos);
    s.rep97->run("insert into " + std::string(list.table) + " (mas, " + std::string(list.product)
                     + ", pro, dir, tel"
                     + (dos ? ", dos) values (?, ?, ?, ?, ?, ?)" : ") values (?, ?, ?, ?, ?)"),
                 values);
}
