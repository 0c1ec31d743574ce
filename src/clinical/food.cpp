#include "clinical/food.h"

#include "store/lookups.h"

double UmbralAlimento(Sesion &s, int especie, double peso, int categoria)
{
    if (categoria != CategoriaAlimento)
        return 0;
    if (especie == 1) {
        const Recordset &c = s.configuracion;
        return (peso <= 10 ? c["detali1"] : peso <= 25 ? c["detali2"] : c["detali3"]).toDouble();
    }
    Recordset &especies = s.listas.mlespecies;
    especies.FindFirst("id = ?", especie);
    return especies.NoMatch() ? 0 : especies["ali"].toDouble();
}
