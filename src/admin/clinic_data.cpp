#include "admin/clinic_data.h"

#include "store/lookups.h"
#include "store/opening.h"

namespace
{

struct Columna {
    std::string_view nombre;
    std::string_view sentencia;
};

const Columna &ColumnaDe(DatoDeClinica dato)
{
    static constexpr Columna columnas[] = {
        {"nom", "UPDATE Veterinaria SET Nom = ?"},
        {"pro", "UPDATE Veterinaria SET Pro = ?"},
        {"dir", "UPDATE Veterinaria SET Dir = ?"},
        {"tel", "UPDATE Veterinaria SET Tel = ?"},
    };
    return columnas[int(dato)];
}

} // namespace

int AnchoDeDato(const Sesion &s, DatoDeClinica dato)
{
    return s.morvane->Ancho("Veterinaria", ColumnaDe(dato).nombre);
}

void GuardarDatoDeClinica(Sesion &s, DatoDeClinica dato, const QString &texto)
{
    const Columna &columna = ColumnaDe(dato);
    const QString guardado =
        s.morvane->Recortado("Veterinaria", columna.nombre, QuitarApostrofes(texto));
    Lote lote(s);
    if (s.morvane->Execute(columna.sentencia, guardado) == 0) {
        // A restored folder may have lost the row.
        s.morvane->Execute("insert into Veterinaria (nom, pro, dir, tel) values ('', '', '', '')");
        s.morvane->Execute(columna.sentencia, guardado);
    }
    lote.Confirmar();
    LeerClinica(s);
}
