// What a column accepts: the one gate that every value passes on its way into a table.
#pragma once

#include "store/jet/translation.h"

#include <optional>

namespace store
{

/// Converts a value to what the column stores: whole numbers are rounded half to even, amounts to
/// four decimals, numbers and dates are parsed from text, and Null becomes No in a Yes/No column.
/// @throws StoreError whose description begins with the column's name in quotes: 3421 when the
///         value has the wrong type, 6 when it is out of the column's range, 3163 when text is
///         longer than the column
Value toColumn(const Value &value, const jet::Column &column);

/// Converts a value so that it can be compared with a column of dates or times; Null stays Null.
/// @param type ColumnType::Date or ColumnType::Time
/// @throws StoreError 3421 when the value is not a date or a time
Value toMoment(const Value &value, ColumnType type);

/// Parses a date, a time or both as the files store them, a time as H:mm, or a date as the screens
/// show it.
/// @return a Value holding a QDate, QTime or QDateTime; nullopt for any other text
std::optional<Value> momentFromText(const QString &text);

} // namespace store
