// From the words of a statement to its tree.
#pragma once

#include "store/jet/tree.h"

#include <string_view>

namespace jet
{

/// @throws StoreError 3075 for everything that the dialect does not take
Statement parseStatement(std::string_view sql);

struct Condition {
    ExpressionPtr value;
    int given = 0; // how many '?' there are
};

/// Parses what may stand behind WHERE. @throws as parseStatement
Condition parseCondition(std::string_view text);

} // namespace jet
