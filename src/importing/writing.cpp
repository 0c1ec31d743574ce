#include "importing/plan.h"

#include "store/lookups.h"
#include "store/opening.h"

#include <QLocale>
#include <QRegularExpression>
#include <algorithm>

using namespace clients;
using namespace importing;
using namespace Qt::StringLiterals;

namespace importing
{

namespace
{
constexpr int RowsPerBatch = 500;
}

// --- Writing

// The id of an entry, which is added when the first row that uses it is written. That it is new the
// plan knows: asking the file again for each would take as long as the list is, every time.
int Plan::writtenEntry(PlannedList &list, int place)
{
    if (place < 0)
        return 0;
    ++list.entries[size_t(place)].uses;
    return added(list, place);
}

// The same without counting a use: a parent may be one that only rows name which add nothing.
int Plan::added(PlannedList &list, int place)
{
    if (place < 0)
        return 0;
    PlannedEntry &e = list.entries[size_t(place)];
    if (e.id)
        return e.id;
    int parent = 0;
    if (list.list == List::Subregion)
        parent = added(regions, e.parent);
    else if (list.list == List::Breed)
        parent = added(allSpecies, e.parent);
    e.id = store::takeIdentifier(s, list.counter, list.maximum);
    switch (list.list) {
    case List::Region:
        s.clientes->Execute("insert into cldepartamento (id, nom, ctel) values (?, ?, ?)", e.id,
                            e.nom, e.code);
        break;
    case List::Subregion:
        s.clientes->Execute("insert into cllocalidad (id, nom, cp, dep) values (?, ?, ?, ?)", e.id,
                            e.nom, e.code, parent);
        break;
    case List::Breed:
        s.clientes->Execute("insert into mlrazas (id, nom, esp) values (?, ?, ?)", e.id, e.nom,
                            parent);
        break;
    default:
        s.clientes->Execute("insert into " + std::string(list.table) + " (id, nom) values (?, ?)",
                            e.id, e.nom);
    }
    return e.id;
}

void Plan::raiseRanks(PlannedList &list)
{
    const std::string sql = "update " + std::string(list.table)
                            + " set ran = IIf(ran + ? > 32000, 32000, ran + ?) where id = ?";
    for (PlannedEntry &e : list.entries)
        if (e.uses > 0) {
            s.clientes->Execute(sql, e.uses, e.uses, e.id);
            e.uses = 0;
        }
}

void Plan::write(PlannedClient &c)
{
    const int dep = writtenEntry(regions, c.region);
    const int loc = writtenEntry(subregions, c.subregion);
    c.f.idc = store::takeIdentifier(s, "contadorclientes", store::Highest16BitId);
    s.clientes->Execute(
        "insert into clientes (idc, ayn, dir, loc, dep, codp2, codt2, tel2, telc2, email, mark,"
        " obs, feci, fecu, deuda) values (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, 0, ?, ?, ?, 0)",
        c.f.idc, c.f.ayn, c.f.dir, loc, dep, c.f.codp2, c.f.codt2, c.f.tel2, c.f.telc2, c.f.email,
        c.f.obs, s.reloj.hoy, s.reloj.hoy);
    s.morvane->Execute("insert into perfiles (idc) values (?)", c.f.idc);
}

void Plan::write(PlannedPatient &m)
{
    const PatientRecord &f = m.f;
    const int esp = writtenEntry(allSpecies, m.species);
    const int raz = writtenEntry(breeds, m.breed);
    const int pel = writtenEntry(coats, m.coat);
    const int idm = store::takeIdentifier(s, "contadormascotas", store::Highest16BitId);
    s.clientes->Execute(
        "insert into mascotas (idm, idc, nom, esp, raz, pel, car, Chip, fecn, pes, sex, ped, rep,"
        " dec, ser, obs, feci, fot) values (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, 0, ?, 0, ?, ?, 0)",
        idm, clientes[size_t(m.client)].f.idc, f.nom, esp, raz, pel, f.car, f.Chip, f.fecn, f.pes,
        f.sex, f.ped, f.dec, f.obs, s.reloj.hoy);
}

void Plan::write(const KeepGoing &keepGoing)
{
    report.written = true;
    size_t done = 0;
    try {
        while (done < rows.size()) {
            s.progress.tellBar(int(done), int(rows.size()));
            if (keepGoing && !keepGoing()) {
                report.interrupted = true;
                break;
            }
            const size_t until = std::min(rows.size(), done + RowsPerBatch);
            Lote lote(s);
            for (size_t n = done; n < until; ++n) {
                if (report.lines[n].outcome != Outcome::New)
                    continue;
                const PlannedRow &row = rows[n];
                if (addsClient(row))
                    write(clientes[size_t(row.client)]);
                if (addsPatient(row))
                    write(mascotas[size_t(row.patient)]);
            }
            for (PlannedList *list : {&regions, &subregions, &breeds})
                raiseRanks(*list);
            lote.commit();
            done = until;
        }
        s.progress.tellBar(int(done), int(rows.size()));
    } catch (const store::StoreError &e) {
        report.interrupted = true;
        report.failure = store::errorText(s, e);
    }
    if (report.interrupted) { // tell of what was written, and of nothing else
        rows.resize(done);
        report.lines.resize(done);
        count();
    }
}

} // namespace importing
