// Rows of a query, walked and changed by the operations that the rules are written in.
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
/// Position: on the first row after opening, or at both ends when there is none. MoveNext past the
/// last row gives EOF, MovePrevious before the first gives BOF. After Delete there is no current
/// row until the next move. After a FindFirst that finds nothing, NoMatch is true and the position
/// stays where it was. When the rows are read again the position stays on its row, wherever it
/// stands now; if that one is gone there is no current row.
///
/// A move gives up an edit that was not written: nothing that was put reaches another row.
///
/// An updatable recordset knows its rows by their keys. Edit reads the row again, and Update writes
/// the columns that were put, through a join all or none, if they still stand as Edit found them.
/// A snapshot refuses Edit, AddNew and Delete.
///
/// When a table is defined anew the rows are read again; positions of columns, which Columna gives,
/// hold until then.
///
/// A field name that the rows do not have throws StoreError 3265; reading without a current
/// row, or when the database was closed, throws 3021.
class Recordset
{
public:
    Recordset();
    Recordset(Recordset &&) noexcept;
    Recordset &operator=(Recordset &&) noexcept;
    ~Recordset();

    bool BOF() const;
    bool EOF_() const; // EOF is a macro of the C library
    int RecordCount() const;
    /// From 0; -1 when there is no current row.
    int AbsolutePosition() const;
    void AbsolutePosition(int row);
    void MoveFirst();
    void MoveLast();
    void MoveNext();
    void MovePrevious();

    /// Walks to the first row that meets the criterion, '?' where a value goes. "column = value"
    /// costs a hash look-up.
    template <typename... V>
    void FindFirst(std::string_view criterion, const V &...values)
    {
        const std::array<store::Value, sizeof...(V)> v{store::Value(values)...};
        find(criterion, v);
    }
    bool NoMatch() const;

    /// A field of the first row that meets the criterion, which holds one '?', and nullopt when
    /// there is none. The position stays where it is, so that nobody's walk is disturbed.
    std::optional<store::Value> lookUp(std::string_view criterion, const store::Value &value,
                                       std::string_view field) const;

    /// Value of the current row by column name, letter case does not matter. While Edit or AddNew
    /// is open, the value that was put.
    store::Value operator[](std::string_view field) const;
    /// The same by position, for walks over many rows; see Columna.
    store::Value operator[](int column) const;
    /// Position of a column, for use with operator[]. @throws StoreError 3265
    int Column(std::string_view field) const;
    int allColumns() const;
    QString nameOf(int column) const;
    store::ColumnType typeOf(int column) const;

    /// @throws StoreError 3021 when another terminal has deleted the row
    void Edit();
    void AddNew();
    /// @throws StoreError when the column does not take the value, see column_value.h
    void Put(std::string_view field, const store::Value &value);
    void Put(int column, const store::Value &value);
    /// Writes what Put changed. A row that was added stands behind all others until they are read
    /// again. @throws StoreError 3197 when another terminal has changed one of the columns
    ///         since Edit, 3021 when it has deleted the row; the edit stays open then
    void Update();
    /// Key of the row that was added last: its counter where the table has one.
    qint64 addedKey() const;
    void CancelUpdate();
    void Delete();
    void Close();
    bool isOpen() const;

    /// Reads the rows again now.
    void Requery();

private:
    friend class Base;
    struct Data;
    void find(std::string_view criterion, std::span<const store::Value> values);
    explicit Recordset(std::unique_ptr<Data> d);
    std::unique_ptr<Data> d;
};
