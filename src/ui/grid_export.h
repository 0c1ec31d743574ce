// A grid as a file that a spreadsheet opens.
#pragma once

#include "ui/grid.h"

namespace ui
{

/// Writes some columns, in the order given, of all rows, with titles. Separator and decimal mark
/// are those that the locale's spreadsheet expects (";" where the comma is the decimal mark), UTF-8
/// with a mark at its beginning. A text that a spreadsheet would take for a formula is written as
/// text.
/// @throws StoreError 75 when the file cannot be written; nothing of a former file is lost then
void exportCsv(const GridModel &model, const QList<int> &columns, const QString &file);

/// The same as a workbook, with typed cells: numbers, amounts, days and times can be reckoned with.
/// @throws StoreError 75
void exportXlsx(const GridModel &model, const QList<int> &columns, const QString &file);

} // namespace ui
