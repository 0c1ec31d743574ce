// The words of a statement.
#pragma once

#include "store/errors.h"

#include <string>
#include <string_view>
#include <vector>

namespace jet
{

/// A longer text is no statement of ours.
inline constexpr size_t MaxStatement = 64 * 1024;

struct Token {
    enum Kind {
        Name,      // text as written
        Bracketed, // text without its brackets
        Text,      // text without its quotes
        Integer,   // text
        Decimal,   // text
        Moment,    // text in the form that the files keep
        Given,     // '?'
        Symbol,    // text
        End,
    };
    Kind kind = End;
    std::string text;
    int place = 0; // first byte in the statement
};

/// Splits a statement; the last token is always End. One ';' may close it.
/// @throws StoreError 3075 for what is no word of the dialect, comments included
std::vector<Token> tokens(std::string_view sql);

/// Throws the error that shows a place of the statement: reason, line, column, and the line itself
/// with a caret below.
[[noreturn]] void refuse(std::string_view sql, int place, const QString &reason,
                         int number = store::ErrorNumber::Syntax);

} // namespace jet
