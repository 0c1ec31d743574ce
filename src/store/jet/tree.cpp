#include "store/jet/tree.h"

#include <algorithm>

namespace jet
{

bool IsAggregate(std::string_view function)
{
    return function == "COUNT" || function == "SUM" || function == "AVG" || function == "MIN"
           || function == "MAX";
}

bool HoldsAggregate(const Expression &e)
{
    if (e.kind == Expression::Call && IsAggregate(e.text))
        return true;
    return std::ranges::any_of(e.parts, [](const auto &part) { return HoldsAggregate(*part); });
}

} // namespace jet
