// The same clinic on the bare engine: what the store's own work is measured against.
#pragma once

#include <QDate>
#include <QString>
#include <map>
#include <sqlcipher/sqlite3.h>
#include <string>
#include <variant>
#include <vector>

class Textos;

/// The databases of a folder through the engine's own interface, opened as the store opens them:
/// same key, page size, caches and pragmas.
class BaseDesnuda
{
public:
    using Dato = std::variant<qint64, std::string>;

    explicit BaseDesnuda(const QString &carpeta);
    ~BaseDesnuda();
    BaseDesnuda(const BaseDesnuda &) = delete;
    BaseDesnuda &operator=(const BaseDesnuda &) = delete;

    void Adjuntar(const QString &archivo, const char *esquema, int kilobytes);
    void Separar(const char *esquema);
    /// Runs one statement, named parameters taken from `valores`. @return its first cell, 0 if none
    /// @throws std::runtime_error
    qint64 Correr(const std::string &sql);
    sqlite3_stmt *Preparar(const std::string &sql);
    sqlite3 *Conexion() const { return m_db; }

    std::map<std::string, Dato> valores; // by name with its colon

private:
    sqlite3 *m_db = nullptr;
};

/// The daily pass in as few set-based statements as it takes, in one commit as well, with the
/// clinic's settings as the generator makes them. Leaves the same rows as the store's pass; of the
/// board's texts only the counts.
class PaseDesnudo
{
public:
    PaseDesnudo(const QString &carpeta, QDate hoy, const Textos &textos);
    void Correr();

private:
    void Pizarra(const std::string &numeros, int dibujo, int codigo1, int codigo2);
    void Alimentos();
    void DosisPerdidas();
    void DosisDelDia();
    void Recordatorios();
    void Cumpleanos();
    void Deudores();
    void Hospedaje();
    void Resumen();
    void Turnos();
    void Existencias();
    void ClientesNuevos();
    void Insertar(const std::string &tarea);
    void LeerHoras();
    int HoraLibre(int servicio);
    static void FuncionHora(sqlite3_context *c, int, sqlite3_value **v);
    static void FuncionNumero(sqlite3_context *c, int, sqlite3_value **);

    QString m_carpeta;
    BaseDesnuda m_base;
    QDate m_hoy;
    qint64 m_ultimaTarea = 0;
    // Minutes of the day that have a task within reach, and how many tasks today has.
    std::vector<char> m_ocupado;
    int m_tareasDeHoy = 0;
    std::map<int, int> m_duracion;
};
