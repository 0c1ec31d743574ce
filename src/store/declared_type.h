// Types of columns as a schema declares them: "TEXT(50)", "CURRENCY".
#pragma once

#include "store/jet/translation.h"

namespace store
{

/// A counter is declared as "COUNTER".
std::string declaredType(const jet::Column &column);
/// The other way, with the name given. @return a column of type None for what this system does not
/// declare
jet::Column readDeclaredType(const std::string &name, const std::string &type);

} // namespace store
