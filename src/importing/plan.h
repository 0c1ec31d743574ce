// Planning an import before anything is written: what becomes of every line of the file. Internal
// to the import.
#pragma once

#include "clients/reference_lists.h"
#include "clients/registry.h"
#include "importing/delimited_file.h"
#include "importing/line_reader.h"
#include "importing/matching.h"
#include "store/identifiers.h"

namespace importing
{

/// The form of a name used for looking it up: spaces simplified, case folded.
inline QString folded(const QString &t) { return t.simplified().toCaseFolded(); }

/// Message for the user saying why a file cannot be read.
QString fileFailure(const Sesion &s, const DelimitedFile &file);

// --- Reference lists, as they will be once the rows are written

struct PlannedEntry {
    int id = 0; // 0: to be added with the first row that uses it
    QString nom;
    QString code;
    int parent = -1; // index in the parent list
    int uses = 0;    // since the usage ranks were last raised
};

struct PlannedList {
    clients::List list;
    int free = 0; // ids still available
    std::vector<PlannedEntry> entries = {};
    QHash<QString, int> byName = {};
    QHash<int, int> byId = {};

    /// Reads the stored list. @param parents its parent list, nullptr if it has none
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

    /// The id of the entry at an index; 0 for -1 or for an entry that is not stored yet.
    int idAt(int place) const { return place < 0 ? 0 : entries[size_t(place)].id; }
};

// --- What a row says

struct PlannedClient {
    clients::ClientRecord f; // idc: of the existing client, or set once it is written
    ClientContact contact;
    int region = -1;
    int subregion = -1;
    int unnamed = 0; // number of animals without a name so far
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
    bool opensClient = false;  // the first row of its owner
    bool opensPatient = false; // the first row of its animal
};

// A patient of the clinic that a row may refer to.
struct KnownPatient {
    int esp = 0;
    QDate fecn;
    QString chip;
    bool taken = false; // already matched: a patient is one animal of the file at most
};

/// An import in progress.
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
    std::vector<PlannedRow> rows; // parallel to report.lines

    PlannedList regions{clients::List::Region};
    PlannedList subregions{clients::List::Subregion};
    PlannedList allSpecies{clients::List::Species};
    PlannedList breeds{clients::List::Breed};
    PlannedList coats{clients::List::Coat};

    /// Reads the file and plans every line. @return false when it stopped; the report says why
    bool make(const KeepGoing &keepGoing);
    /// Writes the plan; the report then holds what was written.
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
    QStringList m_notices; // of the current line
    ClientsDirectory m_directory;
    QHash<QString, int> m_clientByNumber;
    QHash<QString, int> m_patientByNumber;
    QHash<QString, std::vector<int>> m_patientsByName;
};

} // namespace importing
