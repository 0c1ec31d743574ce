// The rows of a query, read and changed through the operations that the rules are written in.
#pragma once

#include "store/jet/criterion.h"
#include "store/value.h"

#include <QString>
#include <array>
#include <memory>
#include <optional>
#include <string_view>

class Base;

/// The rows of one query, read when it is opened.
///
/// Position: on the first row after opening; both BOF and EOF_ are true when there are no rows.
/// MoveNext past the last row leads to EOF_, MovePrevious before the first one to BOF. After Delete
/// there is no current row until the next move. After a FindFirst that finds nothing, NoMatch is
/// true and the position has not moved. When the rows are read again, the position follows its row
/// to its new place; if that row is gone, there is no current row.
///
/// A move discards an edit that was not written, so that no value ends up in another row.
///
/// An updatable recordset identifies its rows by their keys. Edit reads the row again. Update
/// writes the columns that were put, if they still hold what Edit read; through a join it writes
/// all of them or none. A snapshot refuses Edit, AddNew and Delete.
///
/// When a table is redefined, the rows are read again; column positions from Column() are valid
/// until then.
///
/// An unknown field throws StoreError 3265; reading without a current row, or after the database
/// was closed, throws 3021. An operation the recordset does not offer throws 3000.
class Recordset
{
public:
    /// A recordset without rows or database; only isOpen() and Close() may be called on it.
    Recordset();
    Recordset(Recordset &&) noexcept;
    Recordset &operator=(Recordset &&) noexcept;
    ~Recordset();

    /// Whether the position is before the first row, or there are no rows.
    bool BOF() const;
    /// Whether the position is past the last row. EOF is a macro of the C library.
    bool EOF_() const;
    /// Number of rows, without those deleted here.
    int RecordCount() const;
    /// Index of the current row, from 0; -1 at BOF and EOF_ and when the row is gone. Right after
    /// Delete, and in the indexes after it, rows deleted here still count.
    int AbsolutePosition() const;
    /// Moves to the row with that index. @throws StoreError 3021 when there is none
    void AbsolutePosition(int row);
    /// Moves to the first row, or to EOF_ when there is none.
    void MoveFirst();
    /// Moves to the last row.
    void MoveLast();
    /// Moves one row on; at EOF_ it stays there.
    void MoveNext();
    /// Moves one row back; at BOF it stays there.
    void MovePrevious();

    /// Moves to the first row that meets the criterion, searching from the start; NoMatch() tells
    /// whether there is one. "column = value" costs a hash look-up instead of a scan.
    /// @param criterion condition as after WHERE, with '?' for values
    /// @throws StoreError 3075 or 3061 for the criterion, 3421 for a value that is not a date or
    ///         time where one is needed
    template <typename... V>
    void FindFirst(std::string_view criterion, const V &...values)
    {
        const std::array<store::Value, sizeof...(V)> v{store::Value(values)...};
        find(criterion, v);
    }
    /// Whether the last FindFirst() found nothing.
    bool NoMatch() const;

    /// A field of the first row that meets the criterion, nullopt when there is none. The position
    /// does not move, so callers can share a recordset.
    /// @param criterion as for FindFirst(), with a single '?' for @p value
    std::optional<store::Value> lookUp(std::string_view criterion, const store::Value &value,
                                       std::string_view field) const;

    /// A field of the current row by column name, regardless of letter case; "table.column" where
    /// both sides of a join have the name. During Edit or AddNew, the value that was put.
    store::Value operator[](std::string_view field) const;
    /// The same by column position, for walks over many rows; see Column().
    store::Value operator[](int column) const;
    /// Position of a column, from 0. @throws StoreError 3265
    int Column(std::string_view field) const;
    /// Number of columns.
    int allColumns() const;
    /// Name of a column as the query gives it. @throws StoreError 3265
    QString nameOf(int column) const;
    /// Type of a column. @throws StoreError 3265
    store::ColumnType typeOf(int column) const;

    /// Begins to change the current row. @throws StoreError 3021 when another terminal has deleted
    /// it
    void Edit();
    /// Begins to add a row; columns that are not put take their defaults.
    void AddNew();
    /// Sets a field for Update() to write.
    /// @throws StoreError when the column refuses the value, see column_value.h
    void Put(std::string_view field, const store::Value &value);
    /// The same by column position.
    void Put(int column, const store::Value &value);
    /// Writes what was put. An added row comes after all others until the rows are read again.
    /// @throws StoreError 3197 when another terminal has changed one of the columns since Edit,
    ///         3021 when it has deleted the row; the edit stays open then
    void Update();
    /// Key of the row added last: its counter if the table has one.
    qint64 addedKey() const;
    /// Discards what was put.
    void CancelUpdate();
    /// Deletes the current row.
    void Delete();
    /// Frees the rows. Moving or reading afterwards throws StoreError.
    void Close();
    /// Whether it was opened by a database and not closed since.
    bool isOpen() const;

    /// Reads the rows again now and discards an open edit.
    void Requery();

private:
    friend class Base;
    struct Data;
    void find(std::string_view criterion, std::span<const store::Value> values);
    explicit Recordset(std::unique_ptr<Data> d);
    std::unique_ptr<Data> d;
};
