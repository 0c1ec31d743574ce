// Search criteria of FindFirst, tried against rows in memory.
#pragma once

#include "store/jet/translation.h"

#include <functional>
#include <optional>
#include <span>

namespace jet
{

/// A parsed criterion such as "idc = 57", "nom like 'cen*'" or "ida = ? and (ven <= date() + 30)".
class Criterion
{
public:
    /// @throws StoreError 3075 for what the dialect does not take, 3061 for a name that
    ///         @p columns does not hold
    static std::shared_ptr<const Criterion> compile(std::string_view text,
                                                    std::span<const OutputColumn> columns);
    virtual ~Criterion() = default;

    /// A criterion of the form "column = value": the position of the column and the value to look
    /// for, so that the caller can use a hash instead of a walk.
    struct Equality {
        int column = 0;
        store::Value value;
    };
    /// The given values as they are compared: a text that stands against a column of days or times
    /// becomes one. To be called once before the rows are tried.
    /// @param room holds the values when one of them changes
    /// @throws StoreError 3421 for what is no day or time
    virtual std::span<const store::Value> prepare(std::span<const store::Value> given,
                                                  std::vector<store::Value> &room) const = 0;

    virtual std::optional<Equality> asEquality(std::span<const store::Value> dados) const = 0;

    /// Whether a row meets it. Null comparisons are not met.
    /// @param cell gives the row's value of a column by position
    /// @param hoy   what Date() means
    virtual bool meets(const std::function<store::Value(int)> &cell,
                       std::span<const store::Value> dados, QDate hoy) const = 0;
};

} // namespace jet
