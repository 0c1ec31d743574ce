// Splits a statement into tokens.
#pragma once

#include "store/errors.h"

#include <string>
#include <string_view>
#include <vector>

namespace jet
{

/// The longest statement accepted, in bytes; far beyond any that this program runs.
inline constexpr size_t MaxStatement = 64 * 1024;

/// A token; its text is UTF-8.
struct Token {
    enum Kind {
        Name,      // text as written
        Bracketed, // text without its brackets
        Text,      // text without its quotes
        Integer,   // text
        Decimal,   // text
        Moment,    // text in the form that the files store
        Given,     // '?'
        Symbol,    // text
        End,
    };
    Kind kind = End;
    std::string text;
    int place = 0; // offset of its first byte in the statement
};

/// Splits a statement; the last token is always End. One ';' may end it.
/// @throws StoreError 3075 for anything that is not a token of the dialect, such as a comment
std::vector<Token> tokens(std::string_view sql);

/// Throws an error that points at a place in the statement: reason, line, column, and the line
/// itself with a caret below it.
/// @param place offset in bytes
[[noreturn]] void refuse(std::string_view sql, int place, const QString &reason,
                         int number = store::ErrorNumber::Syntax);

} // namespace jet
