// The declared schema of the five databases, and making new files from it.
#pragma once

#include "store/jet/translation.h"

#include <QString>
#include <QStringList>
#include <vector>

class Motor;

namespace store
{

/// What Configuracion.Ver holds in a folder that this version works with.
inline constexpr int SchemaVersion = 554;

struct DeclaredIndex {
    QStringList columns;
    bool unique = false;
    std::optional<Value> onlyWhere; // value that the single column must have
};

struct DeclaredTable {
    QString name;
    std::vector<jet::NewColumn> columns;
    std::vector<DeclaredIndex> indices;
};

/// Databases in the order in which they are made: morvane, clientes, finanzas, os, rep97.
const QStringList &databases();
/// Path of a database below the data folder ("clientes.mdb", "reportes/rep97.mdb").
QString fileOf(const QString &base);

/// Reads a database's declaration that is built into the program. @throws std::runtime_error
std::vector<DeclaredTable> readSchema(const QString &base);
/// The same from a text. @param file what errors call it @throws std::runtime_error "file:line:
/// what"
std::vector<DeclaredTable> parseSchema(const QString &text, const QString &file);

/// Makes the tables and indexes in an open, empty database.
void createTables(Motor &motor, const std::string &schema,
                  const std::vector<DeclaredTable> &tables);

/// Whether an open database has every table, column, index and key of rows that this version
/// declares, and its texts room enough. What it has beyond is nobody's business.
bool isComplete(Motor &motor, const std::string &schema, const std::vector<DeclaredTable> &tables);
/// Adds what it lacks; rows that are there get the defaults. To be called inside of a Lote, before
/// any other statement runs on the database, and by whoever is alone in the folder.
/// @throws StoreError
void complete(Motor &motor, const std::string &schema, const std::vector<DeclaredTable> &tables);

} // namespace store
