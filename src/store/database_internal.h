// What Base and Recordset share: compiled statements and the marks of what has been written.
#pragma once

#include "store/database.h"
#include "store/jet/translation.h"

#include <QElapsedTimer>
#include <list>
#include <string>
#include <unordered_map>

namespace store
{

/// Looks strings up by view, so that a statement's text is never copied to find it.
struct TextHash {
    using is_transparent = void;
    size_t operator()(std::string_view t) const noexcept
    {
        return std::hash<std::string_view>{}(t);
    }
};
template <typename T>
using ByText = std::unordered_map<std::string, T, TextHash, std::equal_to<>>;

/// How often this process has written and defined a table.
struct TableMarks {
    int writes = 0;
    int definitions = 0;
};

struct Compiled {
    jet::Translation translation;
    std::unique_ptr<Statement> statement;
    TableMarks *writes = nullptr;    // of the table that it writes
    std::vector<TableMarks *> reads; // of the tables that it reads
};

class EngineCatalogue final : public jet::Catalogue
{
public:
    EngineCatalogue(Motor &motor, std::string schema);
    const jet::Table *find(std::string_view name) const override;
    void forget();

private:
    Motor &m_motor;
    std::string m_schema;
    mutable bool m_read = false;
    mutable ByText<std::string> m_names; // folded name to the database's own
    mutable ByText<std::unique_ptr<jet::Table>> m_tables;
};

} // namespace store

struct Base::Internals {
    Motor &motor;
    std::string schema;
    const Reloj &reloj;
    store::EngineCatalogue catalogue;
    store::ByText<std::unique_ptr<store::Compiled>> changes;
    store::ByText<std::unique_ptr<store::Compiled>> withKeys;
    store::ByText<std::unique_ptr<store::Compiled>> withoutKeys;
    store::ByText<std::unique_ptr<store::Statement>> direct; // write-backs of recordsets
    store::ByText<store::TableMarks> writes;                 // by folded table name
    std::list<std::unique_ptr<store::Statement>> walks; // of the recordsets that only go forward
    int generation = 0;  // of compiled statements: all are made anew after a definition
    bool closed = false; // the database is gone; the recordsets that it opened find this

    // Writes of other processes, noticed at most this often: a look costs a visit to the file.
    static constexpr qint64 IntervalMs = 200;
    QElapsedTimer lastLook;
    qint64 versionVista = -1;
    qint64 schemaSeen = -1;
    qint64 undoneSeen = 0;
    int foreign = 0;            // counts changes of the engine's data version
    int foreignDefinitions = 0; // counts definitions that were not made here

    Internals(Motor &m, std::string e, const Reloj &r);
    store::Compiled &compile(std::string_view sql,
                             store::ByText<std::unique_ptr<store::Compiled>> &cache, bool keys);
    std::unique_ptr<store::Compiled> translate(std::string_view sql, bool keys);
    store::Compiled &query(std::string_view sql, bool keys);
    void bind(const jet::Translation &t, store::Statement &statement,
              std::span<const store::Value> values) const;
    store::TableMarks *writesOf(std::string_view table);
    store::Statement &directStatement(const std::string &sql);
    void lookForForeignWrites();
    void look();
    void define(const jet::Definition &d);
    void forgetDefinitions();
    void close();
};
