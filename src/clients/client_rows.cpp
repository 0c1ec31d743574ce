#include "clients/client_rows.h"

#include "clients/reference_lists.h"
#include "store/jet/text.h"

#include <algorithm>

using namespace clients;

namespace
{

ClientRow read(const Recordset &r)
{
    ClientRow f{r[0].toInt(), r[1].toText(), r[2].toText(), ClientSign::None};
    const int obra = r[4].toInt();
    if (r[3].toBool() || obra == 2)
        f.sign = ClientSign::Alert;
    else if (r[5].toBool() || r[6].toBool() || obra == 5)
        f.sign = ClientSign::Notice;
    return f;
}

// Sorts in the store's own order, but folds each name only once: having the store sort tens of
// thousands of clients takes several times as long as reading them.
struct ByName {
    std::string plain;
    ClientRow row;
};

bool beforeOf(const ByName &a, const ByName &b)
{
    if (const int llanos = a.plain.compare(b.plain))
        return llanos < 0;
    if (a.row.ayn != b.row.ayn)
        if (const int accents = jet::compareText(a.row.ayn.toStdString(), b.row.ayn.toStdString()))
            return accents < 0;
    return a.row.idc < b.row.idc;
}

} // namespace

std::vector<ClientRow> clients::clientsRows(Sesion &s)
{
    Recordset r = s.clientes->OpenSnapshot(
        "select idc, ayn, tel2, deuda, obra, faltadir, faltamail from clientes");
    std::vector<ByName> order;
    order.reserve(size_t(r.RecordCount()));
    for (; !r.EOF_(); r.MoveNext()) {
        ClientRow f = read(r);
        std::string plain = jet::plainOf(f.ayn.toStdString());
        order.push_back({std::move(plain), std::move(f)});
    }
    std::ranges::sort(order, beforeOf);

    std::vector<ClientRow> rows;
    rows.reserve(order.size());
    for (ByName &p : order)
        rows.push_back(std::move(p.row));
    return rows;
}

std::optional<ClientRow> clients::clientRow(Sesion &s, int idc)
{
    const Recordset r = s.clientes->OpenSnapshot(
        "select idc, ayn, tel2, deuda, obra, faltadir, faltamail from clientes where idc = ?", idc);
    return r.EOF_() ? std::nullopt : std::optional(read(r));
}

std::vector<PatientRow> clients::patientsRows(Sesion &s, int idc)
{
    std::vector<PatientRow> rows;
    Recordset r = s.clientes->OpenSnapshot(
        "select mascotas.idm, mascotas.nom, mlespecies.nom, mlrazas.nom, mascotas.dec from "
        "(mascotas left join mlespecies on mascotas.esp = mlespecies.id) left join mlrazas on "
        "mascotas.raz = mlrazas.id where mascotas.idc = ? order by mascotas.nom",
        idc);
    for (; !r.EOF_(); r.MoveNext())
        rows.push_back({r[0].toInt(), r[1].toText(), r[2].toText(), r[3].toText(), r[4].toBool()});
    return rows;
}

ClientSearch clients::searchType(const QString &text)
{
    const QString t = text.trimmed();
    if (t.isEmpty())
        return ClientSearch::Nothing;
    if (!isNumeric(t))
        return ClientSearch::Name;
    return t.size() < 5 ? ClientSearch::Id : ClientSearch::Telephone;
}

std::vector<FoundPatient> clients::findPatients(Sesion &s, const QString &text)
{
    std::vector<FoundPatient> found;
    if (text.trimmed().isEmpty())
        return found;
    Recordset r = s.clientes->OpenSnapshot(
        "select mascotas.idm, mascotas.idc, mascotas.nom, clientes.ayn from mascotas inner join "
        "clientes on mascotas.idc = clientes.idc where mascotas.nom like ? order by clientes.ayn, "
        "mascotas.nom",
        patternWithStars(text.trimmed()));
    for (; !r.EOF_(); r.MoveNext())
        found.push_back({r[0].toInt(), r[1].toInt(), r[2].toText(), r[3].toText()});
    return found;
}
