#include "commerce/categories.h"

#include "store/lookups.h"

int ServicioDeCategoria(Sesion &s, int idcat)
{
    return LeerCampo(s, "finanzas", "flcategorias", idcat, "idserv").toInt();
}
