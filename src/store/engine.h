// The narrow interface behind which the database engine sits. Nothing above it knows which engine
// it is.
#pragma once

#include "store/errors.h"
#include "store/value.h"

#include <QString>
#include <QStringList>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace store
{

/// A compiled statement of the engine. Parameters and columns count from 0.
class Statement
{
public:
    virtual ~Statement() = default;
    virtual void bind(int parameter, const Value &value) = 0;
    /// Steps to the next row. @return false at the end. @throws StoreError
    virtual bool step() = 0;
    /// Makes ready for the next run; the bound values stay.
    virtual void reset() noexcept = 0;
    virtual int allColumns() const = 0;
    /// The cell of the current row, read as the column's type says.
    virtual Value read(int column, ColumnType type) const = 0;

    // Raw access for rows kept in memory: no text is copied twice.
    enum class Kind : quint8 { Null, Whole, Floating, Text };
    virtual Kind kindOf(int column) const = 0;
    virtual qint64 whole(int column) const = 0;
    virtual double Floating(int column) const = 0;
    /// UTF-8; valid until the next Paso or Reiniciar.
    virtual std::string_view text(int column) const = 0;
};

/// One column of a table as the file declares it.
struct DeclaredColumn {
    std::string name;
    std::string type;           // "TEXT(50)", "CURRENCY", ...
    std::string byDefault = {}; // a literal of the engine, "" for Null
    bool identity = false;
    bool notNull = false;
};

/// How long a statement waits for another terminal: at the counter, and while the program starts,
/// when another one may be running the day or bringing the data up to date.
inline constexpr int WorkingPatienceMs = 30'000;
inline constexpr int StartPatienceMs = 600'000;

/// A database and the file that is to hold its copy.
struct DatabaseCopy {
    std::string schema;
    QString file;
};

} // namespace store

/// One engine with all open databases side by side, each under its name, so that one transaction
/// spans them all.
class Motor
{
public:
    virtual ~Motor() = default;

    /// Opens a database under a name. @throws StoreError 3024 when there is no such file, 3343
    /// when it is no database of this system, is damaged or has another password
    virtual void open(const QString &file, const std::string &schema) = 0;
    /// Makes an empty database of this process alone, which goes with it.
    virtual void openInMemory(const std::string &schema) = 0;
    /// Must not run inside a transaction.
    virtual void close(const std::string &schema) = 0;
    virtual std::unique_ptr<store::Statement> prepare(const std::string &sql) = 0;
    virtual void run(const std::string &sql) = 0;
    /// Rows changed by the last statement.
    virtual int changedRows() const = 0;
    /// The key of the row that was inserted last.
    virtual qint64 lastKey() const = 0;

    /// Takes the write lock of every open database at once; waits for other terminals up to the
    /// engine's time limit. @throws StoreError 3260 when it passes
    virtual void begin() = 0;
    virtual void commit() = 0;
    virtual void rollBack() noexcept = 0;
    virtual bool inTransaction() const = 0;
    /// The number of the open transaction, 0 when there is none. What was read in it is changed by
    /// nobody else until its end.
    virtual qint64 transaction() const = 0;

    /// A part of the transaction that can be taken back by itself; parts nest, and each ends with
    /// one of the two others. One in which nothing is written costs next to nothing.
    virtual void beginPart() = 0;
    virtual void commitPart() = 0;
    virtual void undoPart() noexcept = 0;
    /// For the transaction that has begun: its parts are only counted, which costs nothing. To take
    /// one back that has written something is then to lose the whole.
    virtual void countParts() = 0;
    virtual bool isLost() const = 0;

    /// How often writes were taken back; rows kept in memory are stale then.
    virtual qint64 rollbackCount() const = 0;

    /// How long a statement waits for another terminal, in milliseconds.
    virtual void setPatience(int ms) = 0;
    /// What is called, some twenty times a second, while a statement waits for another terminal,
    /// with the milliseconds of waiting. No statement can be run meanwhile: one that is tried
    /// throws 3260.
    virtual void whileWaiting(std::function<void(int ms)> tell) = 0;

    /// Copies databases while they are in use, all as they stand at one moment. Other terminals can
    /// read meanwhile; those that write wait. A file that exists is replaced, when the copy is
    /// whole. Not inside of a transaction. @throws StoreError, and the files are as they were or
    /// whole
    virtual void copy(const std::vector<store::DatabaseCopy> &copies) = 0;
    /// Reads a whole database. @return "ok", or its first fault in the engine's words
    virtual std::string check(const std::string &schema) = 0;

    virtual std::vector<std::string> tables(const std::string &schema) = 0;
    virtual std::vector<store::DeclaredColumn> allColumns(const std::string &schema,
                                                          const std::string &table) = 0;
    /// Statements that make the table's indexes again.
    virtual std::vector<std::string> indices(const std::string &schema,
                                             const std::string &table) = 0;
    /// A number that changes when another process has written the database.
    virtual qint64 version(const std::string &schema) = 0;
    /// A number that changes with every definition, whoever makes it.
    virtual qint64 schemaVersion(const std::string &schema) = 0;
    /// What names a row of a table that declares no key, for as long as nobody rebuilds the table.
    virtual std::string undeclaredKey() const = 0;
};

namespace store
{

/// Value of a raw cell as the column's type says.
Value cellValue(Statement::Kind kind, qint64 whole, double floating, std::string_view text,
                ColumnType type);

/// The engine that is built in: one encrypted file per database.
std::unique_ptr<Motor> createFileEngine();

/// Makes a new, empty, encrypted file. @throws StoreError 75 when it cannot be written or
/// exists already
void createEmptyFile(const QString &file);

/// Copies a database that nobody has open into a new file without the room that deleted rows have
/// left. @throws StoreError; there is no new file then
void compactFile(const QString &from, const QString &to);

/// Reads a whole file. @return "ok", or its first fault in the engine's words, which may be that it
/// cannot be opened
std::string checkFile(const QString &file);

/// What came out of a damaged file.
struct Salvage {
    qint64 rows = 0;          // of all tables
    QStringList tablesHarmed; // tables of which rows were lost
};
/// Brings what can be read of a damaged database that nobody has open into a new file; the damaged
/// one stays as it is.
/// @throws StoreError 3343 when the file cannot be read at all or a table would be lost as a whole;
/// there is no new file then
Salvage repairFile(const QString &from, const QString &to);

/// What a file is by its beginning, for one that does not open.
enum class FileFormat {
    Unknown, // encrypted with another password, damaged, or anything else
    Empty,
    PlainText,
    Unencrypted, // a database of the engine without a password
    Jet,         // a database of the engine that this one took the place of
};
/// To be asked of a file that nobody in this process has open.
FileFormat formatOf(const QString &file);

} // namespace store
