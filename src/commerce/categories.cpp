#include "commerce/categories.h"

#include "store/lookups.h"

using namespace commerce;

int ServicioDeCategoria(Sesion &s, int idcat)
{
    return LeerCampo(s, "finanzas", "flcategorias", idcat, "idserv").toInt();
}

QList<ProfileCategory> commerce::profileCategories(Sesion &s)
{
    QList<ProfileCategory> all;
    Recordset r =
        s.finanzas->OpenSnapshot("select idcat, nom, CatPerfil from FLCategorias order by nom");
    for (; !r.EOF_(); r.MoveNext())
        all.append({r["idcat"].toInt(), r["nom"].toText(), r["CatPerfil"].toBool()});
    return all;
}

void commerce::saveProfileCategory(Sesion &s, int idcat, bool account)
{
    s.finanzas->Execute("update flcategorias set CatPerfil = ? where idcat = ?", account, idcat);
}
