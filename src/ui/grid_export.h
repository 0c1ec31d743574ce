// Writes a grid to a file that spreadsheets open.
#pragma once

#include "ui/grid.h"

namespace ui
{

/// Writes all rows with titles as CSV, UTF-8 with a byte order mark. Separator and decimal mark are
/// the ones a spreadsheet of the current locale expects (";" where the comma is the decimal mark).
/// A text that a spreadsheet would read as a formula is escaped.
/// @param columns which columns to write, in this order
/// @throws StoreError 75 when the file cannot be written; an existing file is left untouched
void exportCsv(const GridModel &model, const QList<int> &columns, const QString &file);

/// Writes the same as a workbook with typed cells, so that numbers, amounts, dates and times can be
/// calculated with.
/// @throws StoreError 75 when the file cannot be written
void exportXlsx(const GridModel &model, const QList<int> &columns, const QString &file);

} // namespace ui
