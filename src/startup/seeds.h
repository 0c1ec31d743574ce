// The first rows of a new clinic, read from the seed files that are built into the program.
#pragma once

#include "store/database.h"
#include "store/texts.h"

#include <QStringList>
#include <vector>

/// A seed file in one language: rows of texts under the names of their columns. A row has as many
/// cells as there are columns; an empty cell stands for Null.
struct Semillas {
    QStringList columnas;
    QList<QStringList> filas;

    /// Cell by column name. @throws std::runtime_error when there is no such column
    const QString &Celda(const QStringList &fila, QStringView columna) const;
};

/// A text of letters.txt and the settings that it fills.
struct CartaSembrada {
    QStringList columnas;
    QString texto;
};

/// Rows with an empty text in a column of the language are left out: they do not exist there.
/// @param archivo name without its ending, such as "products"
/// @throws std::runtime_error when there is no such file or a line cannot be read
Semillas LeerSemillas(const QString &archivo, Idioma idioma);
QList<CartaSembrada> LeerCartas(Idioma idioma);

/// The value of a cell as the column's type says. @throws ErrorDeAlmacen 3265 for an unknown column
Valor ValorDeSemilla(const Base &base, std::string_view tabla, const QString &columna,
                     const QString &celda);

/// Adds a row with these columns.
void InsertarFila(Base &base, const QString &tabla, const QStringList &columnas,
                  const std::vector<Valor> &valores);

/// Adds every row of a seed file whose columns are those of the table.
void InsertarSemillas(Base &base, const QString &tabla, const Semillas &semillas);
