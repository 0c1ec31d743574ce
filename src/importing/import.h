// Importing clients and patients from a file of another program: first a dry run that reports what
// would become of every line, then the writing.
#pragma once

#include "importing/words.h"
#include "store/session.h"

namespace importing
{

/// A file before the user has said what its columns hold.
struct FileView {
    QString failure; // message for the user when it cannot be read; "" when it can
    bool utf8 = true;
    QChar separator; // ',', ';' or a tab
    QStringList titles;
    QList<QStringList> rows; // the first rows below the titles
    QList<Datum> columns;    // what each column seems to hold
};
/// Reads the titles and the first @p rows rows of a file.
FileView inspectFile(Sesion &s, const QString &file, int rows);
/// The file's encoding and separator in words.
QString viewText(const Sesion &s, const FileView &view);

/// The choices of the user.
struct ImportOptions {
    QString file;
    QList<Datum> columns;           // one for each column of the file
    std::optional<DateOrder> order; // of numeric dates; nullopt to detect it from the file
    QString owner;                  // client for animals whose row names no owner
};

/// What becomes of a line of the file.
enum class Outcome {
    New,      // it adds a client, a patient or both
    Existing, // its client and patient are in the clinic already, or earlier in the file
    Rejected,
    WithoutPlace, // there are no identifiers left for it
};

/// The report on one line of the file.
struct ReportLine {
    int line = 0; // number in the file; the titles are line 1
    Outcome outcome = Outcome::New;
    bool notice = false; // it was accepted, but something in it was changed
    QString client;
    QString patient;
    QString text; // why, and what was changed
};

/// What an import would do, or did.
struct ImportReport {
    /// What has to be supplied or corrected before the import can be planned.
    enum class Missing { Nothing, File, ColumnCount, Owner, Order };
    Missing missing = Missing::Nothing;
    QString failure; // what is missing or what stopped the writing, in words; "" when all went well

    int newClients = 0;
    int existingClients = 0;
    int newPatients = 0;
    int existingPatients = 0;
    int rejected = 0; // a number of lines, like the next ones
    int notices = 0;
    int withoutPlace = 0;
    int firstWithoutPlace = 0;

    bool written = false;     // it was not a dry run
    bool interrupted = false; // by the user or by `failure`; what was written stays and is listed
    QStringList notes;        // remarks on the whole file
    std::vector<ReportLine> lines;
};

/// Called now and then, outside any transaction; returning false stops the work.
using KeepGoing = std::function<bool()>;

/// The dry run: plans the import and writes nothing. Problems are in the report.
ImportReport testImport(Sesion &s, const ImportOptions &o, const KeepGoing &keepGoing = {});

/// Plans the import again, so that data added by other terminals in the meantime count, and writes
/// it, with one commit for every few hundred lines. Importing the same file again adds nothing.
/// Problems, including failures to write, are in the report.
ImportReport importFile(Sesion &s, const ImportOptions &o, const KeepGoing &keepGoing = {});

/// The remarks on the whole file and the counts, in words, one per line.
QString importSummary(const Sesion &s, const ImportReport &report);
/// How it ended, in words: as a dry run, completely, or stopped, and at which point.
QString importEnd(const Sesion &s, const ImportReport &report);
/// The name of an outcome for the user: "New", "Already there", ...
QString outcomeText(const Sesion &s, Outcome outcome);

/// Changes what columns hold, from a text such as "Animal's Name=mascota,3=especie,ZIP=nada": the
/// title or number of a column and the name of a datum.
/// @return message for the user saying what is wrong with the text; "" when nothing is
QString applyColumns(const Sesion &s, const QString &text, const QStringList &titles,
                     QList<Datum> &columns);

} // namespace importing
