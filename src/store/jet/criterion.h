// Search criteria of FindFirst, evaluated on rows in memory.
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
    /// Parses a criterion.
    /// @param text    condition as after WHERE, UTF-8, with '?' for values
    /// @param columns of the rows it will be evaluated on
    /// @throws StoreError 3075 for anything outside the dialect, and for subqueries and functions
    ///         other than Date(); 3061 for a name not in @p columns; 3421 for a literal that is not
    ///         a date or time where it is compared with one
    static std::shared_ptr<const Criterion> compile(std::string_view text,
                                                    std::span<const OutputColumn> columns);
    virtual ~Criterion() = default;

    /// The column and value of a criterion of the form "column = value".
    struct Equality {
        int column = 0;
        store::Value value;
    };
    /// Converts the caller's values to what the rows are compared with: text compared with a column
    /// of dates or times becomes one of those. Call it once before evaluating rows.
    /// @param given one value for each '?'; missing ones count as Null
    /// @param room  storage for the result when a value changes
    /// @throws StoreError 3421 for a value that is not a date or time
    virtual std::span<const store::Value> prepare(std::span<const store::Value> given,
                                                  std::vector<store::Value> &room) const = 0;

    /// The equality that this criterion consists of, so that the caller can use a hash instead of a
    /// scan; nullopt when it has any other form.
    /// @param dados values from prepare()
    virtual std::optional<Equality> asEquality(std::span<const store::Value> dados) const = 0;

    /// Whether a row meets the criterion. A comparison with Null is not met.
    /// @param cell  returns the row's value of a column, by position
    /// @param dados values from prepare()
    /// @param hoy   the value of Date()
    virtual bool meets(const std::function<store::Value(int)> &cell,
                       std::span<const store::Value> dados, QDate hoy) const = 0;
};

} // namespace jet
