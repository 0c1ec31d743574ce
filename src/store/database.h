// One of the clinic's databases: statements and recordsets in the Jet dialect.
#pragma once

#include "store/clock.h"
#include "store/engine.h"
#include "store/recordset.h"

#include <array>
#include <memory>
#include <span>
#include <string_view>

namespace store
{

/// The most rows a query may return; one with more fails with error 7.
struct RowLimit {
    int rows = 0; // 0 for no limit
};

} // namespace store

/// A database, addressed by its name in the engine. Statements are in the Jet dialect with '?' for
/// values; each text is translated once and kept compiled.
///
/// Every call may throw StoreError; a statement that fails has changed nothing. Every value that is
/// written passes the gate of its column, see column_value.h.
///
/// This process or another one may change table definitions at any time: statements are then
/// compiled again and open recordsets reread.
class Base
{
public:
    /// @param motor  engine in which the database is open; must outlive this object
    /// @param schema name of the database in the engine, such as "clientes"
    /// @param reloj  supplies Date(), Time() and Now(); must outlive this object
    Base(Motor &motor, std::string schema, const Reloj &reloj);
    /// Recordsets opened from it stay valid objects, but throw 3021 from now on.
    ~Base();
    Base(const Base &) = delete;
    Base &operator=(const Base &) = delete;

    /// Runs a statement that changes rows or definitions.
    /// @param values one for each '?', in order
    /// @return number of rows changed, 0 for a definition
    /// @throws StoreError 3075 for a syntax error or a query, 3061 for an unknown column or the
    ///         wrong number of values, 3078 for an unknown table, or what a column refuses
    template <typename... V>
    int Execute(std::string_view sql, const V &...values)
    {
        const std::array<store::Value, sizeof...(V)> v{store::Value(values)...};
        return run(sql, v);
    }
    /// Execute() with the values in a span.
    int run(std::string_view sql, std::span<const store::Value> values);

    /// Opens an updatable recordset on a query, with all rows read.
    /// @param values one for each '?', in order
    template <typename... V>
    Recordset OpenRecordset(std::string_view sql, const V &...values)
    {
        const std::array<store::Value, sizeof...(V)> v{store::Value(values)...};
        return open(sql, v, true);
    }
    /// Opens a read-only recordset; cheaper, because no row keys are read.
    template <typename... V>
    Recordset OpenSnapshot(std::string_view sql, const V &...values)
    {
        const std::array<store::Value, sizeof...(V)> v{store::Value(values)...};
        return open(sql, v, false);
    }
    /// The same for a grid that can show only a limited number of rows.
    /// @throws StoreError 7 when the query returns more
    template <typename... V>
    Recordset OpenSnapshot(store::RowLimit limit, std::string_view sql, const V &...values)
    {
        const std::array<store::Value, sizeof...(V)> v{store::Value(values)...};
        return open(sql, v, false, limit);
    }
    /// OpenRecordset() or OpenSnapshot() with the values in a span.
    Recordset open(std::string_view sql, std::span<const store::Value> values, bool updatable,
                   store::RowLimit limit = {});

    /// Opens a query for a single walk over any number of rows, holding one row at a time. Only
    /// MoveNext, EOF_, the fields and Close are available. No other terminal can commit before the
    /// end of the rows or Close, so do not ask the user anything on the way; the tables it reads
    /// cannot be redefined meanwhile.
    template <typename... V>
    Recordset OpenForwardOnly(std::string_view sql, const V &...values)
    {
        const std::array<store::Value, sizeof...(V)> v{store::Value(values)...};
        return openForwardOnly(sql, v);
    }
    /// OpenForwardOnly() with the values in a span.
    Recordset openForwardOnly(std::string_view sql, std::span<const store::Value> values);

    /// Opens an updatable recordset that lives as long as the session: its rows are read when first
    /// needed, and read again after this process or another one has written its tables.
    /// @param key for a long list that selects all columns of one table: the integer column by
    ///        which its rows are looked up. Look-ups by it fetch single rows until there have been
    ///        so many that reading the whole list pays off
    Recordset OpenList(std::string_view sql, std::string_view key = {});

    /// The first field of a query's first row, Null when there is no row. Reads one row only.
    template <typename... V>
    store::Value read(std::string_view sql, const V &...values)
    {
        const std::array<store::Value, sizeof...(V)> v{store::Value(values)...};
        return readFirst(sql, v);
    }
    /// read() with the values in a span.
    store::Value readFirst(std::string_view sql, std::span<const store::Value> values);

    /// A number that changes whenever this process writes the table, or another process writes any
    /// table (checked at most five times a second). Whoever caches rows outside a recordset
    /// compares it.
    qint64 version(std::string_view table);

    /// Width in characters of a TEXT(n) column; 0 for any other column and for unknown names.
    int widthOf(std::string_view table, std::string_view column) const;
    /// The text cut to the column's width; the whole text if the column has none.
    QString trimmed(std::string_view table, std::string_view column, const QString &text) const;
    /// The tables of this database.
    const jet::Catalogue &catalogue() const;
    /// Its name in the engine.
    const std::string &Schema() const;
    /// The engine in which it is open.
    Motor &engine() const;

    struct Internals;

private:
    std::shared_ptr<Internals> m_i; // shared with its recordsets, which may outlive it
};
