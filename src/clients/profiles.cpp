#include "clients/profiles.h"

bool ClienteDestacado(Sesion &s, int idc)
{
    Recordset &clientes = s.listas.clientes;
    clientes.FindFirst("idc = ?", idc);
    return !clientes.NoMatch() && clientes["Perfil1"].toBool() && clientes["Perfil3"].toBool()
           && !clientes["Perfil2"].toBool();
}
