#include "store/sqlcipher/fragment.h"

#include <algorithm>

using namespace store;

namespace sqlcipher
{
namespace
{
constexpr size_t Longest = 512 * 1024; // the engine's limit is 1,000,000 bytes

void checkSize(const Fragment &f)
{
    if (f.sql.size() > Longest)
        throw TooLong();
}
} // namespace

std::string quoted(std::string_view text, char quote)
{
    std::string out(1, quote);
    for (const char c : text) {
        if (c == quote)
            out += c;
        out += c;
    }
    return out += quote;
}

Fragment build(std::string_view pattern, Strength strength,
               std::initializer_list<const Fragment *> parts, ColumnType type)
{
    Fragment f;
    f.strength = strength;
    f.type = type;
    // Every word so far may be on the stack of the engine's parser; a call and a CASE add an empty
    // entry of their own.
    int words = 0;
    bool inWord = false;
    for (size_t i = 0; i < pattern.size(); ++i) {
        const char c = pattern[i];
        if (c == '$') {
            const Fragment &part = **(parts.begin() + (pattern[++i] - '1'));
            f.sql += part.sql;
            f.stack = std::max(f.stack, words + part.stack);
            f.height = std::max(f.height, part.height + 3);
            f.aggregate = f.aggregate || part.aggregate;
            f.reach = std::min(f.reach, part.reach);
            ++words;
            inWord = false;
            continue;
        }
        f.sql += c;
        const bool letter = (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_';
        if (c == '(')
            words += 2;
        else if (letter ? !inWord : c != ' ')
            words += 1;
        inWord = letter;
    }
    f.stack = std::max(f.stack, words);
    checkSize(f);
    return f;
}

void append(Fragment &to, std::string_view before, const Fragment &part, int depth)
{
    to.sql += before;
    to.sql += part.sql;
    to.stack = std::max(to.stack, depth + part.stack);
    to.height = std::max(to.height, part.height + 1);
    to.reach = std::min(to.reach, part.reach);
    checkSize(to);
}

Fragment asPlain(std::string sql, ColumnType type)
{
    Fragment f;
    f.sql = std::move(sql);
    f.type = type;
    return f;
}

Fragment at(Strength needed, const Fragment &f)
{
    if (f.strength >= needed)
        return f;
    Fragment whole = build("($1)", Strength::Whole, {&f}, f.type);
    whole.truth = f.truth;
    return whole;
}

Fragment collated(const Fragment &f)
{
    const Fragment operand = at(Strength::Sign, f);
    return build("$1 COLLATE \"JET\"", Strength::Concatenate, {&operand}, f.type);
}

Fragment asValue(const Fragment &f)
{
    if (f.rawMemo)
        return build("CAST($1 AS TEXT)", Strength::Whole, {&f}, ColumnType::Memo);
    if (!f.truth)
        return f;
    return build("-($1)", Strength::Sign, {&f}, ColumnType::YesNo);
}

Fragment asText(const Fragment &f)
{
    const Fragment v = asValue(f);
    if (isTextual(v.type) || isMoment(v.type))
        return v;
    return build("jet_texto($1)", Strength::Whole, {&v}, ColumnType::Text);
}

Fragment asCondition(const Fragment &f, Strength needed)
{
    return at(needed, f.truth ? f : asValue(f));
}

} // namespace sqlcipher
