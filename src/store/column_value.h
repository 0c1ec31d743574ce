// What a column takes: the one gate that every value passes on its way into a table.
#pragma once

#include "store/jet/translation.h"

#include <optional>

namespace store
{

/// The value as the column holds it: whole numbers rounded half to even, amounts to four decimals,
/// numbers and days read from texts, Null in a Yes/No column as No.
/// @throws StoreError with the column's name: 3421 when the value is of another type, 6 when it
///         is out of the column's range, 3163 when a text is longer than the column
Value toColumn(const Value &value, const jet::Column &column);

/// The value as something to compare a column of days or of times with; Null stays Null.
/// @param type Tipo::Date or Tipo::Time
/// @throws StoreError 3421 when it is no day or no time
Value toMoment(const Value &value, ColumnType type);

/// A day, a time or a day with a time as the files hold it, or a day as the screens show it.
/// @return nullopt for any other text
std::optional<Value> momentFromText(const QString &text);

} // namespace store
