// The first rows of a new clinic, read from the seed files built into the program.
#pragma once

#include "store/database.h"
#include "store/texts.h"

#include <QStringList>
#include <vector>

namespace startup
{

/// A seed file in one language: column names and rows of texts. Every row has one cell per column;
/// an empty cell means Null.
struct Seeds {
    QStringList columns;
    QList<QStringList> rows;

    /// The cell of a row by column name. @throws std::runtime_error when there is no such column
    const QString &Cell(const QStringList &row, QStringView column) const;
};

/// A text of letters.txt and the columns of the settings row that it fills.
struct SeededLetter {
    QStringList columns;
    QString text;
};

/// Reads a seed file. A row whose cell for the language is empty does not exist in that language
/// and is left out.
/// @param file name without its extension, such as "products"
/// @throws std::runtime_error when the file is missing or a line cannot be read
Seeds readSeeds(const QString &file, store::Language language);
/// Reads the texts of letters.txt in one language.
/// @throws std::runtime_error when a line cannot be read
QList<SeededLetter> readLetters(store::Language language);

/// Converts a cell to its column's type; an empty cell gives Null.
/// @throws StoreError 3265 for an unknown column
store::Value seedValue(const Base &base, std::string_view table, const QString &column,
                       const QString &cell);

/// Adds one row. @param values one for each of @p columns, in the same order
void insertRow(Base &base, const QString &table, const QStringList &columns,
               const std::vector<store::Value> &values);

/// Adds every row of a seed file, whose columns must all exist in the table.
void insertSeeds(Base &base, const QString &table, const Seeds &seeds);

} // namespace startup
