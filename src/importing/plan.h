// How an import is worked out before anything is written: what every line of the file becomes.
// Of use to the import's own sources alone.
#pragma once

#include "clients/reference_lists.h"
#include "clients/registry.h"
#include "importing/delimited_file.h"
#include "importing/line_reader.h"
#include "importing/matching.h"
#include "store/identifiers.h"

namespace importing
{

/// A name as the lists are looked up by.
inline QString folded(const QString &t) { return t.simplified().toCaseFolded(); }

/// Why a file cannot be read, for the user.
QString fileFailure(const Sesion &s, const DelimitedFile &file);

// --- Reference lists, as they will be once the rows are written

struct PlannedEntry {
    int id = 0; // 0: to be added when the first row that uses it is written
    QString nom;
    QString code;
    int parent = -1; // place in the parent list
    int uses = 0;    // since ranks were last raised
};

struct PlannedList {
    clients::List list;
    int free = 0; // ids that can still be given out
    std::vector<PlannedEntry> entries = {};
    QHash<QString, int> byName = {};
    QHash<int, int> byId = {};

    void load(Sesion &s, const PlannedList *parents)
    {
        const clients::ListTable &t = clients::tableOf(list);
        free = t.highestId - s.configuracion[t.counter].toInt();
        for (const clients::Entry &e : loadList(s, list)) {
            byName.insert(folded(e.nom), int(entries.size()));
            byId.insert(e.id, int(entries.size()));
            entries.push_back(
                {e.id, e.nom, e.code, parents ? parents->byId.value(e.parent, -1) : -1});
        }
    }

    int idAt(int place) const { return place < 0 ? 0 : entries[size_t(place)].id; }
};

// --- What a row tells

struct PlannedClient {
    clients::ClientRecord f; // idc: the client that is there, or once it is written
    ClientContact contact;
    int region = -1;
    int subregion = -1;
    int unnamed = 0; // animals without a name so far
    bool existing = false;
};

struct PlannedPatient {
    clients::PatientRecord f;
    int client = -1;
    int species = -1;
    int breed = -1;
    int coat = -1;
    int line = 0;
    bool withSex = false;
    bool existing = false;
    bool withoutPlace = false;
};

struct PlannedRow {
    int client = -1;
    int patient = -1;
    bool opensClient = false; // the first row of its owner
    bool opensPatient = false;
};

// A patient of the clinic that a row may mean.
struct KnownPatient {
    int esp = 0;
    QDate fecn;
    QString chip;
    bool taken = false; // by a row: each patient is one animal of the file at most
};

struct Plan {
    /// @param options must outlive the plan
    Plan(Sesion &session, const ImportOptions &options)
        : s(session), o(options), m_reader(session, options)
    {
    }

    Sesion &s;
    const ImportOptions &o;
    ImportReport report;
    std::vector<PlannedClient> owners;
    std::vector<PlannedPatient> animals;
    std::vector<PlannedRow> rows; // beside report.lines

    PlannedList regions{clients::List::Region};
    PlannedList subregions{clients::List::Subregion};
    PlannedList allSpecies{clients::List::Species};
    PlannedList breeds{clients::List::Breed};
    PlannedList coats{clients::List::Coat};

    bool make(const KeepGoing &keepGoing);
    void write(const KeepGoing &keepGoing);

private:
    bool fail(ImportReport::Missing missing, const QString &text);
    bool prepare();
    bool locateOrder(const KeepGoing &keepGoing);
    bool goesOn(const DelimitedFile &file, const KeepGoing &keepGoing);
    bool read(const KeepGoing &keepGoing);
    void warnWelcome();

    // One line among those before it
    void place(ReadLine read);
    PlannedPatient planned(const ReadPatient &read);
    int enter(PlannedList &list, const QString &nom, int parent = -1, const QString &code = {});
    int speciesOf(const QString &nom);
    int clientOf(const clients::ClientRecord &f, const QString &number);
    void rename(int client, const QString &before, const QString &name);
    void complete(int client, clients::ClientRecord f);
    int patientOf(PlannedPatient m, const QString &number, int line);
    void complete(PlannedPatient &m, const PlannedPatient &other);
    bool samePatient(const PlannedPatient &a, const PlannedPatient &b) const;

    // All of them beside what the clinic has
    void match();
    void matchClients();
    void matchPatients();
    void giveOutIds();
    bool addsClient(const PlannedRow &row) const;
    bool addsPatient(const PlannedRow &row) const;
    void count();

    // writing.cpp
    void write(PlannedClient &c);
    void write(PlannedPatient &m);
    int writtenEntry(PlannedList &list, int place);
    int added(PlannedList &list, int place);
    void raiseRanks(PlannedList &list);

    LineReader m_reader;
    QStringList m_notices; // of the line at hand
    ClientsDirectory m_directory;
    QHash<QString, int> m_clientByNumber;
    QHash<QString, int> m_patientByNumber;
    QHash<QString, std::vector<int>> m_patientsByName;
};

} // namespace importing
