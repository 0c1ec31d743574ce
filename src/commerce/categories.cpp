#include "commerce/categories.h"

#include "store/lookups.h"

int ServicioDeCategoria(Sesion &s, int idcat)
{
    return LeerCampo(s, "finanzas", "flcategorias", idcat, "idserv").toInt();
}

QList<CategoriaDePerfil> CategoriasDePerfil(Sesion &s)
{
    QList<CategoriaDePerfil> todas;
    Recordset r =
        s.finanzas->OpenSnapshot("select idcat, nom, CatPerfil from FLCategorias order by nom");
    for (; !r.EOF_(); r.MoveNext())
        todas.append({r["idcat"].toInt(), r["nom"].toText(), r["CatPerfil"].toBool()});
    return todas;
}

void GuardarCategoriaDePerfil(Sesion &s, int idcat, bool cuenta)
{
    s.finanzas->Execute("update flcategorias set CatPerfil = ? where idcat = ?", cuenta, idcat);
}
