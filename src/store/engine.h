// What the store requires of a database engine: the contract for anyone who adds one.
//
// The store speaks the dialect of jet/, identifies rows by a key that never changes, and leaves
// everything else to the engine: its own SQL, creating and changing tables, locks, and where the
// databases are kept.
//
// The store relies on nothing that a server would not guarantee:
// - A statement that fails may break the transaction. Anything that may fail inside a transaction
//   is therefore run as a part of it, which is undone on failure.
// - Rows come in any order unless the statement asks for one. Where the dialect promises the order
//   of entry, translate() adds it.
// - An engine may refuse values that do not fit a column, so the store refuses them first.
//
// The tests of the rules run on the built-in engine and on one that is as strict as a server, see
// tests/support/server_engine.h.
#pragma once

#include "store/errors.h"
#include "store/jet/translation.h"

#include <QString>
#include <QStringList>
#include <functional>
#include <memory>
#include <string>

namespace store
{

/// A compiled statement of the engine. Parameters and columns count from 0.
class Statement
{
public:
    virtual ~Statement() = default;
    /// Sets a parameter; it keeps its value until it is bound again. @throws StoreError
    virtual void bind(int parameter, const Value &value) = 0;
    /// Steps to the next row; runs a statement without rows. @return false at the end
    /// @throws StoreError
    virtual bool step() = 0;
    /// Prepares for the next run; the bound values stay.
    virtual void reset() noexcept = 0;
    /// Number of result columns.
    virtual int allColumns() const = 0;

    // Raw access for rows kept in memory, so that no text is copied twice. Dates and times come as
    // text in the form of Value::toText; cellValue() reads them.
    enum class Kind : quint8 { Null, Whole, Floating, Text };
    /// What the current row holds in the column, which says which of the next three to call.
    virtual Kind kindOf(int column) const = 0;
    /// The integer in the column.
    virtual qint64 whole(int column) const = 0;
    /// The floating-point number in the column.
    virtual double floating(int column) const = 0;
    /// The text in the column, UTF-8; valid until the next step or reset.
    virtual std::string_view text(int column) const = 0;

    /// The current row's value in the column, converted to @p type as cellValue() does.
    Value read(int column, ColumnType type) const;
};

/// The value of a raw cell, converted to the column's type. Text that is not a date or time stays
/// text even in a column of those. ColumnType::None leaves the cell as it is.
/// @param kind says which of @p whole, @p floating and @p text (UTF-8) holds the cell
Value cellValue(Statement::Kind kind, qint64 whole, double floating, std::string_view text,
                ColumnType type);

/// A column of a row that is read or written by the row's key.
struct RowColumn {
    std::string_view name;
    ColumnType type = ColumnType::None;
};

/// An operation on one row of a table.
struct RowStatement {
    enum Kind {
        Find,   // returns the columns, or a number if there are none
        Add,    // inserts a row with these columns; all others take their defaults
        Change, // sets the columns
        Erase,
    };
    Kind kind = Find;
    std::string_view table = {};
    std::string_view key = {}; // the column that identifies its rows
    std::vector<RowColumn> columns = {};
    std::vector<RowColumn> unchanged = {}; // must still hold the bound values for the row to match
};

/// A table as it is now.
struct TableDescription {
    std::string name; // in the database's own letter case
    std::vector<jet::NewColumn> columns;
    std::string key;                  // the column that identifies a row; may be a hidden one
    bool keyed = true;                // false for a table from before every table had a key
    std::vector<std::string> indexes; // by the names they were given
};

/// A lock between sessions on any machines. It is released when its holder dies.
class Lock
{
public:
    enum class Mode {
        Alone,  // a single holder, whose name others can read while they wait
        Shared, // any number of holders, as long as no one holds it alone
    };
    virtual ~Lock() = default;
    /// Whether the lock was obtained.
    virtual bool isHeld() const = 0;
    /// Turns a shared lock into an exclusive one without waiting.
    /// @return false when others hold it too; it stays shared then
    virtual bool takeAlone() = 0;
    /// Turns an exclusive lock back into a shared one.
    virtual void share() = 0;
};

/// What a database file that does not open looks like.
enum class FileFormat {
    Unknown, // encrypted with another password, damaged, or anything else
    Empty,
    PlainText,
    Unencrypted, // a database of this engine without a password
    Jet,         // a database of the engine used before this one
};

/// What was recovered from a damaged database.
struct Salvage {
    QString place;            // path of the database
    QString aside;            // path to which the damaged file was moved
    qint64 rows = 0;          // recovered, in all tables
    QStringList tablesHarmed; // tables that lost rows
};

/// How long a statement waits for another terminal, in milliseconds: in normal work, and while the
/// program starts, when another terminal may be running the start of the day or an upgrade.
inline constexpr int WorkingPatienceMs = 30'000;
inline constexpr int StartPatienceMs = 600'000;

} // namespace store

/// One engine with all databases of a clinic side by side, each under its own name ("clientes"), so
/// that one transaction spans them all. It is created for one place, a folder or an address, and
/// only the engine knows how that place is organised.
///
/// Every call that is not noexcept may throw StoreError.
class Motor
{
public:
    virtual ~Motor() = default;

    // --- Databases ---

    /// Whether the place has a database of that name.
    virtual bool exists(const std::string &schema) const = 0;
    /// Creates an empty database without opening it.
    /// @throws StoreError 75 when it cannot be created or already exists
    virtual void create(const std::string &schema) = 0;
    /// Opens a database.
    /// @throws StoreError 3024 when there is no such database, 3343 when it does not belong to this
    ///         system, is damaged or has another password
    virtual void open(const std::string &schema) = 0;
    /// Creates and opens an empty database that only this process sees and that ends with it.
    virtual void openInMemory(const std::string &schema) = 0;
    /// Closes all databases; every compiled statement must have been destroyed before.
    virtual void closeAll() = 0;

    // --- Statements ---

    /// Translates a statement of the dialect.
    /// @param withKeys also select the row key of every table, after the requested columns
    /// @throws StoreError 3075 with line, column and a caret for anything outside the dialect,
    ///         3078 for an unknown table, 3061 for an unknown column
    virtual jet::Translation translate(std::string_view sql, const jet::Catalogue &catalogue,
                                       const std::string &schema, bool withKeys) = 0;
    /// The engine's SQL for an operation on one row. Its parameters are, in this order: the values
    /// of the columns (not for Find), the key (not for Add), the values of the unchanged columns.
    virtual std::string rowText(const std::string &schema, const store::RowStatement &s) const = 0;
    /// Compiles SQL that came from translate() or rowText().
    virtual std::unique_ptr<store::Statement> prepare(const std::string &text) = 0;
    /// Number of rows changed by the last statement.
    virtual int changedRows() const = 0;
    /// The key of the last row inserted.
    virtual qint64 lastKey() const = 0;

    // --- Transactions ---

    /// Begins a transaction with the write lock of every open database, waiting for other terminals
    /// up to the limit of setPatience(). @throws StoreError 3260 when that runs out
    virtual void begin() = 0;
    /// Writes the transaction to all databases or to none.
    /// @throws BatchMustRepeat when isLost()
    virtual void commit() = 0;
    /// Ends the transaction without writing anything.
    virtual void rollBack() noexcept = 0;
    /// Whether a transaction is open.
    virtual bool inTransaction() const = 0;
    /// The number of the open transaction, 0 when there is none. No one else can change what was
    /// read in it before it ends.
    virtual qint64 transaction() const = 0;

    /// Begins a part of the transaction that can be undone alone. Parts nest, and each is ended by
    /// commitPart() or undoPart(). A part in which nothing is written costs next to nothing.
    virtual void beginPart() = 0;
    /// Ends the innermost part and keeps what it wrote.
    virtual void commitPart() = 0;
    /// Ends the innermost part and undoes what it wrote.
    virtual void undoPart() noexcept = 0;
    /// From now on only counts the parts of the open transaction, which costs nothing. Undoing a
    /// part that has written something then loses the whole transaction. An engine may ignore the
    /// call and keep the parts apart.
    virtual void countParts() = 0;
    /// Whether the transaction was lost in that way, so that it can only be rolled back.
    virtual bool isLost() const = 0;

    /// How often writes were undone, which makes rows kept in memory stale.
    virtual qint64 rollbackCount() const = 0;

    // --- Other terminals ---

    /// Sets how long a statement waits for another terminal, in milliseconds.
    virtual void setPatience(int ms) = 0;
    /// Sets a function that is called about twenty times a second while a statement waits for
    /// another terminal, with the milliseconds waited so far. Statements run from within it throw
    /// 3260.
    virtual void whileWaiting(std::function<void(int ms)> tell) = 0;
    /// A number that changes when another process has written the database.
    virtual qint64 version(const std::string &schema) = 0;
    /// A number that changes with every definition, by this process or another.
    virtual qint64 schemaVersion(const std::string &schema) = 0;

    /// Takes a lock, waiting for up to @p seconds; Lock::isHeld() says whether that succeeded. No
    /// database needs to be open.
    /// @param name of the lock, such as "kelvara.dia"
    /// @param meanwhile called about twenty times a second while another session holds the lock,
    ///        with that session's machine and process, "" if unknown
    /// @throws StoreError 70 or 75 when the place does not allow locks
    virtual std::unique_ptr<store::Lock>
    lock(const QString &name, int seconds,
         const std::function<void(const QString &holder)> &meanwhile = {},
         store::Lock::Mode mode = store::Lock::Mode::Alone) = 0;
    /// Machine and process that hold a lock alone, "" when none does or it is unknown.
    virtual QString lockHolder(const QString &name) const = 0;

    // --- Definitions ---

    /// Names of all tables, in the database's own letter case.
    virtual std::vector<std::string> tables(const std::string &schema) = 0;
    /// Describes a table as it is now. @param table in the database's own letter case
    virtual store::TableDescription describe(const std::string &schema,
                                             const std::string &table) = 0;
    /// Carries out a definition completely or not at all. The caller, store::define, has checked
    /// that the names are spelled as in describe(), that what is created does not exist yet, and
    /// that what is changed does. Rows keep their keys and their order whatever happens to their
    /// columns; a table without a counter gets a hidden key, numbered by the engine and never
    /// reused.
    virtual void define(const std::string &schema, const jet::Definition &d) = 0;
    /// Adds the key to a table made without one, numbering the rows in the order of entry. Call it
    /// before running statements on the table.
    virtual void giveKey(const std::string &schema, const std::string &table) = 0;

    // --- Keeping them whole ---

    /// Copies databases while they are in use, all as of the same moment, into an existing folder.
    /// Other terminals can read meanwhile; writers wait. An existing copy is replaced once the new
    /// one is complete. Must not be called inside a transaction.
    /// @throws StoreError; each copy is then either the old or a complete new one
    virtual void copy(const std::vector<std::string> &schemas, const QString &folder) = 0;
    /// Reads an open database completely.
    /// @return "ok", or its first fault in the engine's words
    virtual std::string check(const std::string &schema) = 0;
    /// Tells what a closed database is from the first bytes of its file.
    virtual store::FileFormat formatOf(const std::string &schema) const = 0;
    /// Checks databases that no one has open and replaces the damaged ones by what can still be
    /// read of them: all of them or none. The damaged files are kept.
    /// @param mark distinguishes this repair from others in the names of the damaged files
    /// @return the databases that were damaged
    /// @throws StoreError 3343 with the database's path, when a table that is damaged yields no row
    ///         at all or nothing can be read; every file is then unchanged
    virtual std::vector<store::Salvage> repair(const std::vector<std::string> &schemas,
                                               const QString &mark) = 0;
};

namespace store
{

/// Creates the built-in engine: one encrypted file per database, below a data folder.
std::unique_ptr<Motor> createFileEngine(const QString &folder);

} // namespace store
