// SQL for operations on one row.
#pragma once

#include "store/engine.h"

namespace sqlcipher
{

/// See Motor::rowText.
std::string rowText(const std::string &schema, const store::RowStatement &s);

} // namespace sqlcipher
