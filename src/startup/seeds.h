// The first rows of a new clinic, read from the seed files that are built into the program.
#pragma once

#include "store/database.h"
#include "store/texts.h"

#include <QStringList>
#include <vector>

namespace startup
{

/// A seed file in one language: rows of texts under the names of their columns. A row has as many
/// cells as there are columns; an empty cell stands for Null.
struct Seeds {
    QStringList columns;
    QList<QStringList> rows;

    /// Cell by column name. @throws std::runtime_error when there is no such column
    const QString &Cell(const QStringList &row, QStringView column) const;
};

/// A text of letters.txt and the settings that it fills.
struct SeededLetter {
    QStringList columns;
    QString text;
};

/// Rows with an empty text in a column of the language are left out: they do not exist there.
/// @param file name without its ending, such as "products"
/// @throws std::runtime_error when there is no such file or a line cannot be read
Seeds readSeeds(const QString &file, store::Language language);
QList<SeededLetter> readLetters(store::Language language);

/// The value of a cell as the column's type says. @throws StoreError 3265 for an unknown column
store::Value seedValue(const Base &base, std::string_view table, const QString &column,
                       const QString &cell);

/// Adds a row with these columns.
void insertRow(Base &base, const QString &table, const QStringList &columns,
               const std::vector<store::Value> &values);

/// Adds every row of a seed file whose columns are those of the table.
void insertSeeds(Base &base, const QString &table, const Seeds &seeds);

} // namespace startup
