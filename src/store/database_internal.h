// What Base and Recordset share: compiled statements, and counts of what has been written.
#pragma once

#include "store/database.h"
#include "store/jet/translation.h"

#include <QElapsedTimer>
#include <list>
#include <string>
#include <unordered_map>

namespace store
{

/// Hashes string views, so that a look-up never copies the text of a statement.
struct TextHash {
    using is_transparent = void;
    size_t operator()(std::string_view t) const noexcept
    {
        return std::hash<std::string_view>{}(t);
    }
};
template <typename T>
using ByText = std::unordered_map<std::string, T, TextHash, std::equal_to<>>;

/// How often this process has written and redefined a table.
struct TableMarks {
    int writes = 0;
    int definitions = 0;
};

/// A translated statement, compiled by the engine.
struct Compiled {
    jet::Translation translation;
    std::unique_ptr<Statement> statement;
    TableMarks *writes = nullptr;    // of the table it writes
    std::vector<TableMarks *> reads; // of the tables it reads
};

/// The tables of a database, read from the engine when first asked for.
class EngineCatalogue final : public jet::Catalogue
{
public:
    EngineCatalogue(Motor &motor, std::string schema);
    const jet::Table *find(std::string_view name) const override;
    /// Drops everything read so far, after a definition. Pointers from find() become invalid.
    void forget();

private:
    Motor &m_motor;
    std::string m_schema;
    mutable bool m_read = false;
    mutable ByText<std::string> m_names; // folded name to the name in the database
    mutable ByText<std::unique_ptr<jet::Table>> m_tables;
};

} // namespace store

/// State of a database, shared with its recordsets.
struct Base::Internals {
    Motor &motor;
    std::string schema;
    const Reloj &reloj;
    store::EngineCatalogue catalogue;
    store::ByText<std::unique_ptr<store::Compiled>> changes;
    store::ByText<std::unique_ptr<store::Compiled>> withKeys;
    store::ByText<std::unique_ptr<store::Compiled>> withoutKeys;
    store::ByText<std::unique_ptr<store::Statement>> direct; // statements on single rows
    store::ByText<store::TableMarks> writes;                 // by folded table name
    std::list<std::unique_ptr<store::Statement>> walks;      // of forward-only recordsets
    int generation = 0;  // of the compiled statements, all replaced after a definition
    bool closed = false; // set for the recordsets that outlive the database

    // How often to check for writes of other processes: each check has to read the file.
    static constexpr qint64 IntervalMs = 200;
    QElapsedTimer lastLook;
    qint64 versionVista = -1;
    qint64 schemaSeen = -1;
    qint64 undoneSeen = 0;
    int foreign = 0;            // counts changes of the engine's data version
    int foreignDefinitions = 0; // counts definitions by other processes

    Internals(Motor &m, std::string e, const Reloj &r);
    /// The statement from @p cache, translated and compiled if it is not there yet.
    /// @param keys whether to select the row keys as well
    store::Compiled &compile(std::string_view sql,
                             store::ByText<std::unique_ptr<store::Compiled>> &cache, bool keys);
    /// Translates and compiles a statement. @throws StoreError, see Motor::translate
    std::unique_ptr<store::Compiled> translate(std::string_view sql, bool keys);
    /// compile() for queries. @throws StoreError 3075 for any other statement
    store::Compiled &query(std::string_view sql, bool keys);
    /// Binds the caller's values and the clock's to a statement, each through its column's gate.
    /// @throws StoreError 3061 for the wrong number of values, or what a column refuses
    void bind(const jet::Translation &t, store::Statement &statement,
              std::span<const store::Value> values) const;
    /// The counts of a table, found regardless of letter case. The pointer stays valid.
    store::TableMarks *writesOf(std::string_view table);
    /// A statement in the engine's own SQL, kept compiled until the next definition.
    store::Statement &directStatement(const std::string &sql);
    /// look(), unless the last one was less than IntervalMs ago and nothing was rolled back since.
    void lookForForeignWrites();
    /// Updates the counts of what other processes have written and defined.
    void look();
    /// Carries out a definition and counts it.
    void define(const jet::Definition &d);
    /// Drops every compiled statement and what is known of the tables.
    void forgetDefinitions();
    /// Frees all statements; recordsets throw 3021 from now on.
    void close();
};
