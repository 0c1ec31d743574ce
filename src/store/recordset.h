// Rows of a query, walked and changed by the operations that the rules are written in.
#pragma once

#include "store/jet/criterion.h"
#include "store/value.h"

#include <QString>
#include <memory>
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
/// An updatable recordset writes back only the columns that were put and whose value changed, also
/// through a join; a snapshot refuses Edit, AddNew and Delete.
///
/// A field name that the rows do not have throws ErrorDeAlmacen 3265; reading without a current
/// row throws 3021.
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
    void AbsolutePosition(int fila);
    void MoveFirst();
    void MoveLast();
    void MoveNext();
    void MovePrevious();

    /// Walks to the first row that meets the criterion, '?' where a value goes. "column = value"
    /// costs a hash look-up.
    template <typename... V>
    void FindFirst(std::string_view criterio, const V &...valores)
    {
        const std::array<Valor, sizeof...(V)> v{Valor(valores)...};
        Buscar(criterio, v);
    }
    bool NoMatch() const;

    /// Value of the current row by column name, letter case does not matter. While Edit or AddNew
    /// is open, the value that was put.
    Valor operator[](std::string_view campo) const;
    /// The same by position, for walks over many rows; see Columna.
    Valor operator[](int columna) const;
    /// Position of a column, for use with operator[]. @throws ErrorDeAlmacen 3265
    int Columna(std::string_view campo) const;
    bool TieneColumna(std::string_view campo) const;
    int Columnas() const;
    QString Nombre(int columna) const;
    Tipo TipoDe(int columna) const;

    void Edit();
    void AddNew();
    void Put(std::string_view campo, const Valor &valor);
    void Put(int columna, const Valor &valor);
    /// Writes what Put changed. @throws ErrorDeAlmacen; the edit stays open then
    void Update();
    void CancelUpdate();
    void Delete();
    void Close();
    bool Abierto() const;

    /// Reads the rows again now.
    void Requery();

private:
    friend class Base;
    struct Datos;
    void Buscar(std::string_view criterio, std::span<const Valor> valores);
    explicit Recordset(std::unique_ptr<Datos> d);
    std::unique_ptr<Datos> d;
};
