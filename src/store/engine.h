// What the store asks of a database engine: the contract that whoever adds one has to keep.
//
// The store speaks the dialect of jet/, knows rows by a key that never changes, and leaves all else
// to the engine: its own SQL, how tables are made and changed, locks, and where the databases lie.
//
// The store takes nothing for granted that a server would not give:
// - A statement that fails may break the transaction. What is tried inside of one is a part of it,
//   which is taken back on a failure.
// - Rows come in any order unless the statement tells one. Where the dialect promises the order of
//   entry, translate() and find() see to it.
// - Values that a column does not take may be refused by the engine, so they are refused before.
//
// The tests of the rules run on the engine that is built in and on one that is as unkind as a
// server, see tests/support/server_engine.h.
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
    virtual void bind(int parameter, const Value &value) = 0;
    /// Steps to the next row. @return false at the end. @throws StoreError
    virtual bool step() = 0;
    /// Makes ready for the next run; the bound values stay.
    virtual void reset() noexcept = 0;
    virtual int allColumns() const = 0;

    // Raw access for rows kept in memory: no text is copied twice. Days and times are texts, as
    // Value::toText writes them; cellValue() reads them.
    enum class Kind : quint8 { Null, Whole, Floating, Text };
    virtual Kind kindOf(int column) const = 0;
    virtual qint64 whole(int column) const = 0;
    virtual double floating(int column) const = 0;
    /// UTF-8; valid until the next step or reset.
    virtual std::string_view text(int column) const = 0;

    /// The cell of the current row, read as the column's type says.
    Value read(int column, ColumnType type) const;
};

/// Value of a raw cell as the column's type says.
Value cellValue(Statement::Kind kind, qint64 whole, double floating, std::string_view text,
                ColumnType type);

/// A column of a row that is read or written by its key.
struct RowColumn {
    std::string_view name;
    ColumnType type = ColumnType::None;
};

/// What is done to one row of a table.
struct RowStatement {
    enum Kind {
        Find,   // gives the columns, or a number where none are asked for
        Add,    // a row with these columns; all others take their defaults
        Change, // sets the columns
        Erase,
    };
    Kind kind = Find;
    std::string_view table = {};
    std::string_view key = {}; // the column that names its rows
    std::vector<RowColumn> columns = {};
    std::vector<RowColumn> unchanged = {}; // must hold what is bound, or there is no such row
};

/// A table as it stands.
struct TableDescription {
    std::string name; // in the database's own letter case
    std::vector<jet::NewColumn> columns;
    std::string key;                  // the column that names a row, which need not be one of them
    bool keyed = true;                // false for a table made before all of them had a key
    std::vector<std::string> indexes; // by the names that they were given
};

/// A lock between sessions, on whatever machines they are. It is free again when its holder dies.
class Lock
{
public:
    enum class Mode {
        Alone,  // one holder, who can be told to those who wait
        Shared, // any number of them, while nobody has it alone
    };
    virtual ~Lock() = default;
    virtual bool isHeld() const = 0;
    /// Makes a shared lock one that is held alone, at once or not at all.
    /// @return false when others hold it too; it stays shared then
    virtual bool takeAlone() = 0;
    /// The other way.
    virtual void share() = 0;
};

/// What stands in the place of a database that does not open.
enum class FileFormat {
    Unknown, // encrypted with another password, damaged, or anything else
    Empty,
    PlainText,
    Unencrypted, // a database of the engine without a password
    Jet,         // a database of the engine that this one took the place of
};

/// What came out of a damaged database.
struct Salvage {
    QString place;            // of the database
    QString aside;            // where the damaged one stays
    qint64 rows = 0;          // of all tables
    QStringList tablesHarmed; // tables of which rows were lost
};

/// How long a statement waits for another terminal: at the counter, and while the program starts,
/// when another one may be running the day or bringing the data up to date.
inline constexpr int WorkingPatienceMs = 30'000;
inline constexpr int StartPatienceMs = 600'000;

} // namespace store

/// One engine with all databases of a clinic side by side, each under its name ("clientes"), so
/// that one transaction spans them all. It is made for one place, a folder or an address; what is
/// in that place is nobody else's business.
class Motor
{
public:
    virtual ~Motor() = default;

    // --- Databases ---

    virtual bool exists(const std::string &schema) const = 0;
    /// Makes an empty one, which is not open yet. @throws StoreError 75 when it cannot be made or
    /// is there already
    virtual void create(const std::string &schema) = 0;
    /// @throws StoreError 3024 when there is no such database, 3343 when it is none of this system,
    /// is damaged or has another password
    virtual void open(const std::string &schema) = 0;
    /// Makes an empty database of this process alone, which goes with it.
    virtual void openInMemory(const std::string &schema) = 0;
    /// Closes all of them; what was compiled must be gone before.
    virtual void closeAll() = 0;

    // --- Statements ---

    /// Translates a statement of the dialect.
    /// @param withKeys also select the key of every table's row, behind the asked columns
    /// @throws StoreError 3075 with line, column and a caret for what the dialect does not take,
    ///         3078 for an unknown table, 3061 for a name that is no column
    virtual jet::Translation translate(std::string_view sql, const jet::Catalogue &catalogue,
                                       const std::string &schema, bool withKeys) = 0;
    /// The text of a statement on one row. Its parameters are the values of the columns, but for
    /// Find; the key, but for Add; the values of what must be unchanged.
    virtual std::string rowText(const std::string &schema, const store::RowStatement &s) const = 0;
    /// Compiles a text that one of the two has given.
    virtual std::unique_ptr<store::Statement> prepare(const std::string &text) = 0;
    /// Rows changed by the last statement.
    virtual int changedRows() const = 0;
    /// The key of the row that was inserted last.
    virtual qint64 lastKey() const = 0;

    // --- Transactions ---

    /// Takes the write lock of every open database at once; waits for other terminals as long as
    /// the patience lasts. @throws StoreError 3260 when it passes
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
    /// one back that has written something is then to lose the whole, which the engine may prefer
    /// to never doing so.
    virtual void countParts() = 0;
    virtual bool isLost() const = 0;

    /// How often writes were taken back; rows kept in memory are stale then.
    virtual qint64 rollbackCount() const = 0;

    // --- Other terminals ---

    /// How long a statement waits for another terminal, in milliseconds.
    virtual void setPatience(int ms) = 0;
    /// What is called, some twenty times a second, while a statement waits for another terminal,
    /// with the milliseconds of waiting. No statement can be run meanwhile: one that is tried
    /// throws 3260.
    virtual void whileWaiting(std::function<void(int ms)> tell) = 0;
    /// A number that changes when another process has written the database.
    virtual qint64 version(const std::string &schema) = 0;
    /// A number that changes with every definition, whoever makes it.
    virtual qint64 schemaVersion(const std::string &schema) = 0;

    /// Waits until a lock is taken or @p seconds have passed. No database need be open.
    /// @param name of the lock, such as "kelvara.dia"
    /// @param meanwhile called while another one holds it, some twenty times a second, with its
    ///        machine and process, "" where that is not known
    /// @throws StoreError 70 or 75 when the place does not allow it
    virtual std::unique_ptr<store::Lock>
    lock(const QString &name, int seconds,
         const std::function<void(const QString &holder)> &meanwhile = {},
         store::Lock::Mode mode = store::Lock::Mode::Alone) = 0;
    /// Machine and process that hold a lock alone, "" when nobody does or it is not known.
    virtual QString lockHolder(const QString &name) const = 0;

    // --- Definitions ---

    virtual std::vector<std::string> tables(const std::string &schema) = 0;
    /// @param table in the database's own letter case
    virtual store::TableDescription describe(const std::string &schema,
                                             const std::string &table) = 0;
    /// Carries out a definition, as a whole or not at all. Its names are those of describe(), and
    /// what it makes is not there yet, what it changes is: see store::define. Rows keep their keys
    /// and their order, whatever becomes of their columns; a table without a counter gets a key
    /// that is numbered by itself, never given out twice, and seen by nobody.
    virtual void define(const std::string &schema, const jet::Definition &d) = 0;
    /// Gives a table its key that was made without one; rows are numbered in the order of entry.
    /// To be called before statements run on it.
    virtual void giveKey(const std::string &schema, const std::string &table) = 0;

    // --- Keeping them whole ---

    /// Copies databases while they are in use, all as they stand at one moment, into a folder that
    /// exists. Other terminals can read meanwhile; those that write wait. A copy that is there is
    /// replaced, when the new one is whole. Not inside of a transaction. @throws StoreError, and
    /// each copy is as it was or whole
    virtual void copy(const std::vector<std::string> &schemas, const QString &folder) = 0;
    /// Reads a whole open database. @return "ok", or its first fault in the engine's words
    virtual std::string check(const std::string &schema) = 0;
    /// What a closed database is by its beginning.
    virtual store::FileFormat formatOf(const std::string &schema) const = 0;
    /// Checks databases that nobody has open and puts what can be read of the damaged ones in their
    /// place: all of them or none. @param mark tells this repair from others in the names of the
    /// damaged ones, which stay
    /// @return those that were damaged
    /// @throws StoreError 3343 with the database's place, when nothing or not even some of each
    ///         table can be read; all is as it was then
    virtual std::vector<store::Salvage> repair(const std::vector<std::string> &schemas,
                                               const QString &mark) = 0;
};

namespace store
{

/// The engine that is built in: one encrypted file per database, below a data folder.
std::unique_ptr<Motor> createFileEngine(const QString &folder);

} // namespace store
