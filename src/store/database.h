// One of the clinic's databases: statements and recordsets in the rules' dialect.
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

/// A query with more rows than this is refused with error 7.
struct RowLimit {
    int rows = 0; // 0 for none
};

} // namespace store

/// A database under its name in the engine. Statements are Jet dialect with '?' for values; each
/// text is translated once and kept compiled.
///
/// All calls throw StoreError; a statement that fails has changed nothing. Every value that is
/// written passes the gate of its column, see column_value.h.
///
/// Definitions may change at any time, by this process or another one: statements are compiled anew
/// then and open recordsets read again.
class Base
{
public:
    /// @param reloj what Date() and Time() mean; must outlive the database
    Base(Motor &motor, std::string schema, const Reloj &reloj);
    ~Base();
    Base(const Base &) = delete;
    Base &operator=(const Base &) = delete;

    /// Runs a statement that writes or defines. @return rows changed
    template <typename... V>
    int Execute(std::string_view sql, const V &...values)
    {
        const std::array<store::Value, sizeof...(V)> v{store::Value(values)...};
        return run(sql, v);
    }
    int run(std::string_view sql, std::span<const store::Value> values);

    /// An updatable recordset.
    template <typename... V>
    Recordset OpenRecordset(std::string_view sql, const V &...values)
    {
        const std::array<store::Value, sizeof...(V)> v{store::Value(values)...};
        return open(sql, v, true);
    }
    /// A read-only recordset: cheaper, no keys are read.
    template <typename... V>
    Recordset OpenSnapshot(std::string_view sql, const V &...values)
    {
        const std::array<store::Value, sizeof...(V)> v{store::Value(values)...};
        return open(sql, v, false);
    }
    /// The same for a grid that can show only so many rows.
    template <typename... V>
    Recordset OpenSnapshot(store::RowLimit limit, std::string_view sql, const V &...values)
    {
        const std::array<store::Value, sizeof...(V)> v{store::Value(values)...};
        return open(sql, v, false, limit);
    }
    Recordset open(std::string_view sql, std::span<const store::Value> values, bool updatable,
                   store::RowLimit limit = {});

    /// Rows to be walked through once, however many: one is held at a time. MoveNext, EOF and the
    /// fields are all that it offers. Until its end or Close no other terminal can commit, so
    /// nobody is asked anything on the way, and what is open here cannot be defined anew.
    template <typename... V>
    Recordset OpenForwardOnly(std::string_view sql, const V &...values)
    {
        const std::array<store::Value, sizeof...(V)> v{store::Value(values)...};
        return openForwardOnly(sql, v);
    }
    Recordset openForwardOnly(std::string_view sql, std::span<const store::Value> values);

    /// An updatable recordset that lives as long as the session: its rows are read when first
    /// needed, and read again after this program or another one has written its table.
    /// @param key of a long list, all columns of one table: the whole number by which its rows
    ///        are looked up. Look-ups by it do not read the list until there are many
    Recordset OpenList(std::string_view sql, std::string_view key = {});

    /// The first field of the first row, Null when there is none. Reads one row only.
    template <typename... V>
    store::Value read(std::string_view sql, const V &...values)
    {
        const std::array<store::Value, sizeof...(V)> v{store::Value(values)...};
        return readFirst(sql, v);
    }
    store::Value readFirst(std::string_view sql, std::span<const store::Value> values);

    /// A number that changes when the table was written by this process, or any table by another
    /// one (looked at five times a second), for what is kept of its rows outside of recordsets.
    qint64 version(std::string_view table);

    /// Characters that fit a TEXT(n) column; 0 for any other column.
    int widthOf(std::string_view table, std::string_view column) const;
    /// As much of a text as the column takes: all of it where the column has no width.
    QString trimmed(std::string_view table, std::string_view column, const QString &text) const;
    const jet::Catalogue &catalogue() const;
    const std::string &Schema() const;
    Motor &engine() const;

    struct Internals;

private:
    std::shared_ptr<Internals> m_i; // shared with its recordsets, which outlive it as closed ones
};
