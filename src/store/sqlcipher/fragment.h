// Pieces of the engine's SQL, and how they are put together.
#pragma once

#include "store/jet/translation.h"

#include <initializer_list>
#include <limits>
#include <memory>
#include <string>
#include <string_view>

namespace sqlcipher
{

/// How tightly the outermost operator of a piece binds in the engine.
enum class Strength { Or, And, Not, Equal, Compare, Add, Multiply, Concatenate, Sign, Whole };

/// A piece of the engine's SQL and what is known about it.
struct Fragment {
    std::string sql;
    Strength strength = Strength::Whole;
    store::ColumnType type = store::ColumnType::None;
    int width = 0;
    bool truth = false;     // the engine's 1 or 0, where the files keep -1 or 0
    bool rawMemo = false;   // a MEMO column as it is kept, which may be a text or the same in bytes
    bool aggregate = false; // computes over a group
    bool joined = false;    // by '&', so never Null
    std::shared_ptr<const Fragment> unrounded = nullptr; // of a rounded sum of amounts
    enum { NoLiteral, NullLiteral, WholeLiteral, DecimalLiteral } literal = NoLiteral;
    const jet::Column *column = nullptr; // when it is a bare column
    size_t source = 0;                   // and its place in the FROM clause
    int stack = 1;                       // entries that the engine's parser needs for it
    int height = 1;                      // of the engine's tree
    int reach = Nowhere;                 // nesting of the outermost query that a name of it means
    static constexpr int Nowhere = std::numeric_limits<int>::max();
};

/// Thrown when a piece grows beyond what the engine takes.
struct TooLong {
};

/// A text or a name between quotes, which stand twice inside.
std::string quoted(std::string_view text, char quote);

/// A piece that needs no others.
Fragment asPlain(std::string sql, store::ColumnType type = store::ColumnType::None);

/// Puts pieces into a pattern in the place of $1, $2... The caller sees to it that each binds
/// tightly enough for its place. @throws TooLong
Fragment build(std::string_view pattern, Strength strength,
               std::initializer_list<const Fragment *> parts,
               store::ColumnType type = store::ColumnType::None);

/// Appends a part of a list or a clause, which stands @p depth entries deep in the engine's parser.
/// @throws TooLong
void append(Fragment &to, std::string_view before, const Fragment &part, int depth);

/// In parentheses where it binds more loosely than its place needs.
Fragment at(Strength needed, const Fragment &f);

/// Compared without regard to letter case.
Fragment collated(const Fragment &f);

/// As an operand: with the files' -1 and 0, and never as bytes.
Fragment asValue(const Fragment &f);

/// As a text, Null staying Null.
Fragment asText(const Fragment &f);

/// As a condition of the engine, for which what is not 0 holds.
Fragment asCondition(const Fragment &f, Strength needed);

} // namespace sqlcipher
