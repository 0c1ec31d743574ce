#include "clinical/doses.h"

int ContarDosisAtrasadas(Sesion &s, int idm, int ida, int dos, int idcat)
{
    Recordset r = s.clientes->OpenSnapshot("select ida, dos, si from ArtPlan where idm = ? and "
                                           "idcat = ? and rep < Date() order by rep",
                                           idm, idcat);
    int late = 0;
    for (; !r.EOF_(); r.MoveNext()) {
        if (r[0].toInt() == ida && r[1].toInt() == dos)
            break;
        if (clinical::isOpen(r[2].toInt()))
            ++late;
    }
    return late;
}
