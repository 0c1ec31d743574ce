// Pieces of the engine's SQL, and how to combine them.
#pragma once

#include "store/jet/translation.h"

#include <initializer_list>
#include <limits>
#include <memory>
#include <string>
#include <string_view>

namespace sqlcipher
{

/// Precedence of the outermost operator of a piece in the engine's SQL, loosest first.
enum class Strength { Or, And, Not, Equal, Compare, Add, Multiply, Concatenate, Sign, Whole };

/// A piece of the engine's SQL and what is known about it.
struct Fragment {
    std::string sql;
    Strength strength = Strength::Whole;
    store::ColumnType type = store::ColumnType::None;
    int width = 0;
    bool truth = false;     // the engine's 1 or 0; the files store -1 or 0
    bool rawMemo = false;   // a MEMO column as stored: either text or the same text as bytes
    bool aggregate = false; // computes over a group
    bool joined = false;    // a result of '&', so never Null
    std::shared_ptr<const Fragment> unrounded = nullptr; // the sum inside a rounded sum of amounts
    enum { NoLiteral, NullLiteral, WholeLiteral, DecimalLiteral } literal = NoLiteral;
    const jet::Column *column = nullptr; // if it is a bare column,
    size_t source = 0;                   // with the index of its table in the FROM clause
    int stack = 1;                       // entries it takes on the stack of the engine's parser
    int height = 1;                      // of the engine's expression tree
    int reach = Nowhere;                 // nesting of the outermost query whose names it uses
    static constexpr int Nowhere = std::numeric_limits<int>::max();
};

/// Thrown when a piece grows longer than the engine accepts.
struct TooLong {
};

/// Text in quotes, with quotes inside it doubled.
std::string quoted(std::string_view text, char quote);

/// A piece that contains no others.
Fragment asPlain(std::string sql, store::ColumnType type = store::ColumnType::None);

/// Replaces $1, $2... in a pattern by pieces. The caller makes sure that each binds tightly enough
/// for its place, see at(). @param strength of the result @throws TooLong
Fragment build(std::string_view pattern, Strength strength,
               std::initializer_list<const Fragment *> parts,
               store::ColumnType type = store::ColumnType::None);

/// Appends @p before and @p part, an item of a list or clause.
/// @param depth entries already on the stack of the engine's parser at that place
/// @throws TooLong
void append(Fragment &to, std::string_view before, const Fragment &part, int depth);

/// The piece, in parentheses if it binds more loosely than its place needs.
Fragment at(Strength needed, const Fragment &f);

/// The piece with the collation that ignores letter case.
Fragment collated(const Fragment &f);

/// The piece as an operand: truth values as -1 and 0, memos always as text.
Fragment asValue(const Fragment &f);

/// The piece converted to text; Null stays Null.
Fragment asText(const Fragment &f);

/// The piece as a condition of the engine, which is met by any number but 0.
Fragment asCondition(const Fragment &f, Strength needed);

} // namespace sqlcipher
