// The narrow interface behind which the database engine sits. Nothing above it knows which engine
// it is.
#pragma once

#include "store/errors.h"
#include "store/value.h"

#include <QString>
#include <memory>
#include <span>
#include <string>
#include <vector>

/// A compiled statement of the engine. Parameters and columns count from 0.
class Sentencia
{
public:
    virtual ~Sentencia() = default;
    virtual void Ligar(int parametro, const Valor &valor) = 0;
    /// Steps to the next row. @return false at the end. @throws ErrorDeAlmacen
    virtual bool Paso() = 0;
    /// Makes ready for the next run; the bound values stay.
    virtual void Reiniciar() noexcept = 0;
    virtual int Columnas() const = 0;
    /// The cell of the current row, read as the column's type says.
    virtual Valor Leer(int columna, Tipo tipo) const = 0;

    // Raw access for rows kept in memory: no text is copied twice.
    enum class Clase : quint8 { Nulo, Entero, Doble, Texto };
    virtual Clase ClaseDe(int columna) const = 0;
    virtual qint64 Entero(int columna) const = 0;
    virtual double Doble(int columna) const = 0;
    /// UTF-8; valid until the next Paso or Reiniciar.
    virtual std::string_view Texto(int columna) const = 0;
};

/// One column of a table as the file declares it.
struct ColumnaDeclarada {
    std::string nombre;
    std::string tipo; // "TEXT(50)", "CURRENCY", ...
    std::string porDefecto;
    bool identidad = false;
};

/// One engine with all open databases side by side, each under its name, so that one transaction
/// spans them all.
class Motor
{
public:
    virtual ~Motor() = default;

    /// Opens a database under a name. @throws ErrorDeAlmacen 3024 when there is no such file, 3343
    /// when it is no database of this system, is damaged or has another password
    virtual void Abrir(const QString &archivo, const std::string &esquema) = 0;
    /// Must not run inside a transaction.
    virtual void Cerrar(const std::string &esquema) = 0;
    virtual std::unique_ptr<Sentencia> Preparar(const std::string &sql) = 0;
    virtual void Ejecutar(const std::string &sql) = 0;
    /// Rows changed by the last statement.
    virtual int FilasCambiadas() const = 0;
    virtual qint64 UltimaClave() const = 0;

    /// Takes the write lock of every open database at once; waits for other terminals up to the
    /// engine's time limit. @throws ErrorDeAlmacen 3260 when it passes
    virtual void Empezar() = 0;
    virtual void Confirmar() = 0;
    virtual void Deshacer() noexcept = 0;
    virtual bool EnTransaccion() const = 0;
    /// How often writes were taken back; rows kept in memory are stale then.
    virtual qint64 Deshechos() const = 0;

    virtual std::vector<std::string> Tablas(const std::string &esquema) = 0;
    virtual std::vector<ColumnaDeclarada> Columnas(const std::string &esquema,
                                                   const std::string &tabla) = 0;
    /// Statements that make the table's indexes again.
    virtual std::vector<std::string> Indices(const std::string &esquema,
                                             const std::string &tabla) = 0;
    /// A number that changes when another process has written the database.
    virtual qint64 Version(const std::string &esquema) = 0;
};

/// The engine that is built in: one encrypted file per database.
std::unique_ptr<Motor> CrearMotorDeArchivos();

/// Makes a new, empty, encrypted file. @throws ErrorDeAlmacen 75 when it cannot be written or
/// exists already
void CrearArchivoVacio(const QString &archivo);
