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
/// All calls throw ErrorDeAlmacen; a statement that fails has changed nothing.
class Base
{
public:
    /// @param reloj what Date() and Time() mean; must outlive the database
    Base(Motor &motor, std::string esquema, const Reloj &reloj);
    ~Base();
    Base(const Base &) = delete;
    Base &operator=(const Base &) = delete;

    /// Runs a statement that writes or defines. @return rows changed
    template <typename... V>
    int Execute(std::string_view sql, const V &...valores)
    {
        const std::array<Valor, sizeof...(V)> v{Valor(valores)...};
        return Ejecutar(sql, v);
    }
    int Ejecutar(std::string_view sql, std::span<const Valor> valores);

    /// An updatable recordset.
    template <typename... V>
    Recordset OpenRecordset(std::string_view sql, const V &...valores)
    {
        const std::array<Valor, sizeof...(V)> v{Valor(valores)...};
        return Abrir(sql, v, true);
    }
    /// A read-only recordset: cheaper, no keys are read.
    template <typename... V>
    Recordset OpenSnapshot(std::string_view sql, const V &...valores)
    {
        const std::array<Valor, sizeof...(V)> v{Valor(valores)...};
        return Abrir(sql, v, false);
    }
    Recordset Abrir(std::string_view sql, std::span<const Valor> valores, bool actualizable);

    /// An updatable recordset that lives as long as the session: its rows are read when first
    /// needed, and read again after this program or another one has written its table.
    /// @param clave of a long list, all columns of one table: the whole number that names a row.
    ///        Look-ups by it do not read the list until there are many
    Recordset OpenList(std::string_view sql, std::string_view clave = {});

    /// The first field of the first row, Null when there is none. Reads one row only.
    template <typename... V>
    Valor Leer(std::string_view sql, const V &...valores)
    {
        const std::array<Valor, sizeof...(V)> v{Valor(valores)...};
        return LeerPrimero(sql, v);
    }
    Valor LeerPrimero(std::string_view sql, std::span<const Valor> valores);

    /// A number that changes when the table was written by this process, or any table by another
    /// one (looked at five times a second), for what is kept of its rows outside of recordsets.
    qint64 Version(std::string_view tabla);

    bool ExisteTabla(std::string_view tabla) const;
    bool ExisteColumna(std::string_view tabla, std::string_view columna) const;
    /// Characters that fit a TEXT(n) column; 0 for any other column.
    int Ancho(std::string_view tabla, std::string_view columna) const;
    /// As much of a text as the column takes: all of it where the column has no width.
    QString Recortado(std::string_view tabla, std::string_view columna, const QString &texto) const;
    const jet::Catalogo &Catalogo() const;
    const std::string &Esquema() const;
    Motor &ElMotor() const;

    /// Forgets compiled statements and table definitions (before the engine closes the file).
    void Olvidar();

    struct Interno;
    Interno &interno() const { return *m_i; } // for Recordset

private:
    std::unique_ptr<Interno> m_i;
};
