#include "store/jet/tree.h"

#include <algorithm>

namespace jet
{

bool isAggregate(std::string_view function)
{
    return function == "COUNT" || function == "SUM" || function == "AVG" || function == "MIN"
           || function == "MAX";
}

bool holdsAggregate(const Expression &e)
{
    if (e.kind == Expression::Call && isAggregate(e.text))
        return true;
    return std::ranges::any_of(e.parts, [](const auto &part) { return holdsAggregate(*part); });
}

} // namespace jet
