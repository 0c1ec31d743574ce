#include "admin/clinic_data.h"

#include "store/lookups.h"
#include "store/opening.h"

using namespace admin;

namespace
{

struct Column {
    std::string_view name;
    std::string_view statement;
};

const Column &columnOf(ClinicDatum datum)
{
    static constexpr Column columns[] = {
        {"nom", "UPDATE Veterinaria SET Nom = ?"},
        {"pro", "UPDATE Veterinaria SET Pro = ?"},
        {"dir", "UPDATE Veterinaria SET Dir = ?"},
        {"tel", "UPDATE Veterinaria SET Tel = ?"},
    };
    return columns[int(datum)];
}

} // namespace

int admin::datumWidth(const Sesion &s, ClinicDatum datum)
{
    return s.morvane->widthOf("Veterinaria", columnOf(datum).name);
}

void admin::saveClinicDatum(Sesion &s, ClinicDatum datum, const QString &text)
{
    const Column &column = columnOf(datum);
    const QString saved = s.morvane->trimmed("Veterinaria", column.name, QuitarApostrofes(text));
    Lote lote(s);
    if (s.morvane->Execute(column.statement, saved) == 0) {
        // A restored data folder may lack the row.
        s.morvane->Execute("insert into Veterinaria (nom, pro, dir, tel) values ('', '', '', '')");
        s.morvane->Execute(column.statement, saved);
    }
    lote.commit();
    store::readClinic(s);
}
