// The declared schema of the five databases, and making new files from it.
#pragma once

#include "store/jet/translation.h"

#include <QString>
#include <QStringList>
#include <vector>

class Motor;

struct IndiceDeclarado {
    QStringList columnas;
    bool unico = false;
    QString soloDonde; // value that the single column must have, "" for all rows
};

struct TablaDeclarada {
    QString nombre;
    std::vector<jet::Columna> columnas;
    QStringList porDefecto; // SQL literal for each column, "" for Null
    std::vector<IndiceDeclarado> indices;
};

/// Databases in the order in which they are made: morvane, clientes, finanzas, os, rep97.
const QStringList &BasesDeDatos();
/// Path of a database below the data folder ("clientes.mdb", "reportes/rep97.mdb").
QString ArchivoDe(const QString &base);

/// Reads a database's declaration that is built into the program. @throws std::runtime_error
std::vector<TablaDeclarada> LeerEsquema(const QString &base);
/// The same from a text. @param archivo what errors call it @throws std::runtime_error "file:line:
/// what"
std::vector<TablaDeclarada> AnalizarEsquema(const QString &texto, const QString &archivo);

/// Makes the tables and indexes in an open, empty database.
void CrearTablas(Motor &motor, const std::string &esquema,
                 const std::vector<TablaDeclarada> &tablas);
