#include "store/jet/fragment.h"

#include <algorithm>

namespace jet
{
namespace
{
constexpr size_t Longest = 512 * 1024; // the engine takes 1,000,000 bytes

void CheckSize(const Fragment &f)
{
    if (f.sql.size() > Longest)
        throw TooLong();
}
} // namespace

bool IsText(Tipo t) { return t == Tipo::Text || t == Tipo::Memo; }
bool IsMoment(Tipo t) { return t == Tipo::Date || t == Tipo::Time; }
bool IsWhole(Tipo t)
{
    return t == Tipo::Counter || t == Tipo::Byte || t == Tipo::Smallint || t == Tipo::Long
           || t == Tipo::YesNo;
}
bool IsFloating(Tipo t) { return t == Tipo::Single || t == Tipo::Double || t == Tipo::Currency; }

std::string Quoted(std::string_view text, char quote)
{
    std::string out(1, quote);
    for (const char c : text) {
        if (c == quote)
            out += c;
        out += c;
    }
    return out += quote;
}

Fragment Build(std::string_view pattern, Strength strength,
               std::initializer_list<const Fragment *> parts, Tipo tipo)
{
    Fragment f;
    f.strength = strength;
    f.tipo = tipo;
    // Every word so far may lie on the stack of the engine's parser; a call and a CASE put an
    // empty entry of their own there.
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
    CheckSize(f);
    return f;
}

void Append(Fragment &to, std::string_view before, const Fragment &part, int depth)
{
    to.sql += before;
    to.sql += part.sql;
    to.stack = std::max(to.stack, depth + part.stack);
    to.height = std::max(to.height, part.height + 1);
    to.reach = std::min(to.reach, part.reach);
    CheckSize(to);
}

Fragment Plain(std::string sql, Tipo tipo)
{
    Fragment f;
    f.sql = std::move(sql);
    f.tipo = tipo;
    return f;
}

Fragment At(Strength needed, const Fragment &f)
{
    if (f.strength >= needed)
        return f;
    Fragment whole = Build("($1)", Strength::Whole, {&f}, f.tipo);
    whole.truth = f.truth;
    return whole;
}

Fragment Collated(const Fragment &f)
{
    const Fragment operand = At(Strength::Sign, f);
    return Build("$1 COLLATE \"JET\"", Strength::Concatenate, {&operand}, f.tipo);
}

Fragment Value(const Fragment &f)
{
    if (f.rawMemo)
        return Build("CAST($1 AS TEXT)", Strength::Whole, {&f}, Tipo::Memo);
    if (!f.truth)
        return f;
    return Build("-($1)", Strength::Sign, {&f}, Tipo::YesNo);
}

Fragment AsText(const Fragment &f)
{
    const Fragment v = Value(f);
    if (IsText(v.tipo) || IsMoment(v.tipo))
        return v;
    return Build("jet_texto($1)", Strength::Whole, {&v}, Tipo::Text);
}

Fragment AsCondition(const Fragment &f, Strength needed)
{
    return At(needed, f.truth ? f : Value(f));
}

} // namespace jet
