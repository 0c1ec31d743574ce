// Parses a statement into its tree.
#pragma once

#include "store/jet/tree.h"

#include <string_view>

namespace jet
{

/// Parses a statement, UTF-8. @throws StoreError 3075 for anything outside the dialect
Statement parseStatement(std::string_view sql);

/// A parsed condition.
struct Condition {
    ExpressionPtr value;
    int given = 0; // number of '?'
};

/// Parses a condition as after WHERE. @throws StoreError like parseStatement()
Condition parseCondition(std::string_view text);

} // namespace jet
