// The declared schema of the five databases, and how files are created and completed from it.
#pragma once

#include "store/jet/translation.h"

#include <QString>
#include <QStringList>
#include <vector>

class Motor;

namespace store
{

/// The value of Configuracion.Ver in a folder that this version works with.
inline constexpr int SchemaVersion = 554;

/// An index of a declared table.
struct DeclaredIndex {
    QStringList columns;
    bool unique = false;
    std::optional<Value> onlyWhere; // index only rows whose single column has this value
};

/// A table as the schema declares it.
struct DeclaredTable {
    QString name;
    std::vector<jet::NewColumn> columns;
    std::vector<DeclaredIndex> indices;
};

/// Names of the databases in the order of their creation: morvane, clientes, finanzas, os, rep97.
const QStringList &databases();
/// Path of a database relative to the data folder ("clientes.mdb", "reportes/rep97.mdb").
QString fileOf(const QString &base);

/// Reads the declaration of a database that is built into the program.
/// @throws std::runtime_error when there is none or it is faulty
std::vector<DeclaredTable> readSchema(const QString &base);
/// Parses a declaration. @param file its name in error messages
/// @throws std::runtime_error "file:line: what"
std::vector<DeclaredTable> parseSchema(const QString &text, const QString &file);

/// Creates the tables and indexes in an open, empty database. @throws StoreError
void createTables(Motor &motor, const std::string &schema,
                  const std::vector<DeclaredTable> &tables);

/// Whether an open database has every table, column, index and row key that this version declares,
/// and text columns at least as wide. Anything it has in addition is ignored.
/// @throws StoreError
bool isComplete(Motor &motor, const std::string &schema, const std::vector<DeclaredTable> &tables);
/// Adds what the database lacks; existing rows get the defaults. Call it inside a Lote, before any
/// other statement runs on the database, with no other session in the folder.
/// @throws StoreError
void complete(Motor &motor, const std::string &schema, const std::vector<DeclaredTable> &tables);

} // namespace store
