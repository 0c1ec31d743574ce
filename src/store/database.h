// One of the clinic's databases: statements and recordsets in the rules' dialect.
#pragma once

#include "store/clock.h"
#include "store/engine.h"
#include "store/recordset.h"

#include <array>
#include <memory>
#include <span>
#include <string_view>

/// A database under its name in the engine. Statements are Jet dialect with '?' for values; each
/// text is translated once and kept compiled.
///
/// All calls throw StoreError; a statement that fails has changed nothing.
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
    Recordset open(std::string_view sql, std::span<const store::Value> values, bool updatable);

    /// An updatable recordset that lives as long as the session: its rows are read when first
    /// needed, and read again after this program or another one has written its table.
    /// @param key of a long list, all columns of one table: the whole number that names a row.
    ///        Look-ups by it do not read the list until there are many
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

    bool tableExists(std::string_view table) const;
    bool columnExists(std::string_view table, std::string_view column) const;
    /// Characters that fit a TEXT(n) column; 0 for any other column.
    int widthOf(std::string_view table, std::string_view column) const;
    /// As much of a text as the column takes: all of it where the column has no width.
    QString trimmed(std::string_view table, std::string_view column, const QString &text) const;
    const jet::Catalogue &catalogue() const;
    const std::string &Schema() const;
    Motor &engine() const;

    /// Forgets compiled statements and table definitions (before the engine closes the file).
    void forget();

    struct Internals;
    Internals &internals() const { return *m_i; } // for Recordset

private:
    std::unique_ptr<Internals> m_i;
};
