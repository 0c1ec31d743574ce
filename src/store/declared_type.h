// Column types as a schema declares them: "TEXT(50)", "CURRENCY".
#pragma once

#include "store/jet/translation.h"

namespace store
{

/// The declaration of a column's type, such as "TEXT(50)", "CURRENCY" or "COUNTER". A text column
/// without a width gets 255, the widest there is.
std::string declaredType(const jet::Column &column);
/// The inverse: a column of the given name from the declaration of its type, in any letter case.
/// @return a column of type None when this system does not use the type
jet::Column readDeclaredType(const std::string &name, const std::string &type);

} // namespace store
