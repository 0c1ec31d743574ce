// Importing clients and patients from a file of another program: first a dry run that tells what
// would happen to every line, then the writing.
#pragma once

#include "importing/words.h"
#include "store/session.h"

namespace importing
{

/// A file as it is before anybody has said what its columns hold.
struct FileView {
    QString failure; // why it cannot be read, for the user; "" when it can
    bool utf8 = true;
    QChar separator; // ',', ';' or a tab
    QStringList titles;
    QList<QStringList> rows; // the first ones
    QList<Datum> columns;    // what each column seems to hold
};
/// Reads titles and the first rows of a file.
FileView inspectFile(Sesion &s, const QString &file, int rows);
/// Its characters and separator in words.
QString viewText(const Sesion &s, const FileView &view);

/// What the user decides.
struct ImportOptions {
    QString file;
    QList<Datum> columns;           // one for each column of the file
    std::optional<DateOrder> order; // of days in figures; nullopt to find it in the file
    QString owner;                  // client of animals whose row names no owner
};

/// What becomes of a line of the file.
enum class Outcome {
    New,      // a client, a patient or both are added
    Existing, // all that it tells of is there already, or stands earlier in the file
    Rejected,
    WithoutPlace, // the identifiers are used up
};

struct ReportLine {
    int line = 0; // in the file, the titles being on the first
    Outcome outcome = Outcome::New;
    bool notice = false; // it was taken, but not all as it stood
    QString client;
    QString patient;
    QString text; // why, and what was changed
};

/// What an import does or did.
struct ImportReport {
    /// What is missing before anything can be told.
    enum class Missing { Nothing, File, ColumnCount, Owner, Order };
    Missing missing = Missing::Nothing;
    QString failure; // the text for it, or for what stopped the writing; "" when all went well

    int newClients = 0;
    int existingClients = 0;
    int newPatients = 0;
    int existingPatients = 0;
    int rejected = 0; // lines, like the next ones
    int notices = 0;
    int withoutPlace = 0;
    int firstWithoutPlace = 0;

    bool written = false;     // it was no dry run
    bool interrupted = false; // by the user or by `failure`; what was written stays and is told
    QStringList notes;        // what holds for the whole file
    std::vector<ReportLine> lines;
};

/// Asked now and then, outside of any transaction: false stops the work.
using KeepGoing = std::function<bool()>;

/// The dry run. Writes nothing.
ImportReport testImport(Sesion &s, const ImportOptions &o, const KeepGoing &keepGoing = {});

/// Plans anew, so that what other terminals have added meanwhile counts, and writes. Every few
/// hundred lines are one commit. Doing it again adds nothing.
ImportReport importFile(Sesion &s, const ImportOptions &o, const KeepGoing &keepGoing = {});

/// What holds for the whole file and the counts, in words, one line each.
QString importSummary(const Sesion &s, const ImportReport &report);
/// How it ended: as a dry run, complete, or stopped and where, or before anything was written.
QString importEnd(const Sesion &s, const ImportReport &report);
/// "New", "Already there", ...
QString outcomeText(const Sesion &s, Outcome outcome);

/// Changes what the columns hold by a text such as "Animal's Name=mascota,3=especie,ZIP=nada":
/// title or number of a column, name of a datum.
/// @return what is wrong with it, for the user; "" when nothing is
QString applyColumns(const Sesion &s, const QString &text, const QStringList &titles,
                     QList<Datum> &columns);

} // namespace importing
