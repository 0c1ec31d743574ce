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

// The id of an entry; it is added with the first row that uses it. The plan knows which ones are
// new, since searching the stored list each time would be slow for long lists.
int Plan::writtenEntry(PlannedList &list, int place)
{
    if (place < 0)
        return 0;
    ++list.entries[size_t(place)].uses;
    return added(list, place);
}

// The same without counting a use, since a parent may be named only by rows that add nothing.
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
    e.id = addEntry(s, list.list, {.nom = e.nom, .code = e.code, .parent = parent});
    return e.id;
}

void Plan::raiseRanks(PlannedList &list)
{
    const std::string sql = "update " + std::string(tableOf(list.list).table)
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
    c.f.idc = insertClient(s, c.f, dep, loc);
}

void Plan::write(PlannedPatient &m)
{
    PatientRecord f = m.f;
    f.idc = owners[size_t(m.client)].f.idc;
    f.esp = writtenEntry(allSpecies, m.species);
    const int breed = writtenEntry(breeds, m.breed);
    f.pel = writtenEntry(coats, m.coat);
    insertPatient(s, f, breed);
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
                    write(owners[size_t(row.client)]);
                if (addsPatient(row))
                    write(animals[size_t(row.patient)]);
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
    if (report.interrupted) { // report only what was written
        rows.resize(done);
        report.lines.resize(done);
        count();
    }
}

} // namespace importing
