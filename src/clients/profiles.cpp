#include "clients/profiles.h"

bool ClienteDestacado(Sesion &s, int idc)
{
    Recordset &clientes = s.listas.clientes;
    clientes.FindFirst("idc = ?", idc);
    return !clientes.NoMatch() && clientes["Perfil1"].toBool() && clientes["Perfil3"].toBool()
           && !clientes["Perfil2"].toBool();
}

QString TextoPerfil(Sesion &s, int idc)
{
    QStringList lineas;
    if (ClienteDestacado(s, idc))
        lineas << s(2280);
    const Recordset r = s.clientes->OpenSnapshot(
        "select perfil1, perfil2, perfil3, perfil4, perfil5 from clientes where idc = ?", idc);
    constexpr int textos[] = {2737, 2735, 2738, 2734, 2736};
    for (int i = 0; !r.EOF_() && i < 5; ++i)
        if (r[i].toBool())
            lineas << s(textos[i]);
    return lineas.join(u'\n');
}
