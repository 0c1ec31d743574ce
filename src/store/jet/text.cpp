#include "store/jet/text.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

namespace jet
{
namespace
{
char lower(char c) { return c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c; }
bool isAscii(char c) { return static_cast<signed char>(c) >= 0; }
bool isAscii(std::string_view s)
{
    return std::ranges::all_of(s, [](char c) { return isAscii(c); });
}

QString folded(std::string_view s, QString::NormalizationForm form)
{
    QString text = QString::fromUtf8(s.data(), qsizetype(s.size())).toCaseFolded();
    if (text.contains(u'ß')) // Qt folds every letter to a single one
        text.replace(u'ß', QLatin1String("ss"));
    return text.normalized(form);
}

int sign(qsizetype n) { return n < 0 ? -1 : n > 0 ? 1 : 0; }

// The letters without their accents.
QString asPlain(const QString &decomposed)
{
    QString out;
    out.reserve(decomposed.size());
    for (const QChar c : decomposed)
        if (!c.isMark())
            out += c;
    return out;
}

int compareFolded(std::string_view a, std::string_view b)
{
    const QString da = folded(a, QString::NormalizationForm_D);
    const QString db = folded(b, QString::NormalizationForm_D);
    if (const int plain = asPlain(da).compare(asPlain(db)))
        return sign(plain);
    return sign(da.compare(db));
}

// Table of the letters that most names consist of, to avoid folding them: those of one or two bytes
// that fold to a single letter with at most one accent.
struct Letter {
    char16_t plain = 0; // without its accent; 0 for a letter not in the table
    char16_t folded = 0;
};
constexpr size_t Letters = 0x240;

const std::array<Letter, Letters> &letterTable()
{
    static const auto table = [] {
        std::array<Letter, Letters> letters;
        for (size_t i = 0; i < Letters; ++i) {
            const std::string utf8 = QString(QChar(char16_t(i))).toStdString();
            const QString composed = folded(utf8, QString::NormalizationForm_C);
            const QString plain = asPlain(folded(utf8, QString::NormalizationForm_D));
            if (composed.size() == 1 && plain.size() == 1)
                letters[i] = {plain[0].unicode(), composed[0].unicode()};
        }
        return letters;
    }();
    return table;
}

// The letter at a position, which moves past it. Its `plain` is 0 if the table has no such letter.
Letter nextLetter(const std::array<Letter, Letters> &table, std::string_view s, size_t &at)
{
    const auto byte = [&](size_t i) { return static_cast<unsigned char>(s[i]); };
    if (isAscii(s[at]))
        return table[byte(at++)];
    if (at + 1 < s.size() && byte(at) >= 0xC2 && byte(at) <= 0xC8 && byte(at + 1) < 0xC0
        && byte(at + 1) >= 0x80) {
        at += 2;
        return table[(byte(at - 2) & 0x1FU) << 6 | (byte(at - 1) & 0x3FU)];
    }
    return {};
}

void appendUtf8(std::string &out, char16_t c)
{
    if (c < 0x80) {
        out += char(c);
    } else if (c < 0x800) {
        out += char(0xC0 | c >> 6);
        out += char(0x80 | (c & 0x3F));
    } else {
        out += char(0xE0 | c >> 12);
        out += char(0x80 | (c >> 6 & 0x3F));
        out += char(0x80 | (c & 0x3F));
    }
}

// Number of bytes of the first character.
size_t characterLength(std::string_view s)
{
    size_t n = 1;
    while (n < s.size() && (static_cast<unsigned char>(s[n]) & 0xC0) == 0x80)
        ++n;
    return n;
}

std::string_view takeCharacter(std::string_view &s)
{
    const std::string_view c = s.substr(0, characterLength(s));
    s.remove_prefix(c.size());
    return c;
}

bool sameCharacter(std::string_view text, std::string_view pattern)
{
    return text.size() == 1 ? pattern.size() == 1 && lower(text[0]) == lower(pattern[0])
                            : text == pattern;
}

// Ranges follow compareText(), so that [a-z] includes ñ and the accented letters.
bool inSet(std::string_view c, std::string_view set)
{
    while (!set.empty()) {
        const std::string_view low = takeCharacter(set);
        if (set.size() > 1 && set[0] == '-') {
            set.remove_prefix(1);
            const std::string_view high = takeCharacter(set);
            if (compareText(low, c) <= 0 && compareText(c, high) <= 0)
                return true;
        } else if (sameCharacter(c, low)) {
            return true;
        }
    }
    return false;
}

// Whether the character matches the first element of the pattern, which must not be '*'. If it
// does, the element is removed from the pattern.
bool takeMatch(std::string_view c, std::string_view &pattern)
{
    const std::string_view piece = pattern.substr(0, characterLength(pattern));
    size_t length = piece.size();
    bool met = false;
    if (piece == "?") {
        met = true;
    } else if (piece == "#") {
        met = c.size() == 1 && c[0] >= '0' && c[0] <= '9';
    } else if (piece == "[") {
        length = pattern.find(']') + 1;
        std::string_view set = pattern.substr(1, length - 2);
        const bool excluded = set.size() > 1 && set[0] == '!';
        if (excluded)
            set.remove_prefix(1);
        met = inSet(c, set) != excluded;
    } else {
        met = sameCharacter(c, piece);
    }
    if (met)
        pattern.remove_prefix(length);
    return met;
}

// Whether every opening bracket is closed.
bool isWellFormed(std::string_view pattern)
{
    for (size_t open = pattern.find('['); open != pattern.npos;) {
        const size_t close = pattern.find(']', open);
        if (close == pattern.npos)
            return false;
        open = pattern.find('[', close);
    }
    return true;
}

// Matches a folded text against a folded pattern.
bool meetsPattern(std::string_view text, std::string_view patron)
{
    if (!isWellFormed(patron))
        return false;

    // Backtracking to the latest '*' is enough: whatever an earlier one could match, it can too.
    bool star = false;
    std::string_view starPattern;
    std::string_view starText;
    while (!text.empty()) {
        if (patron.starts_with('*')) {
            patron.remove_prefix(1);
            star = true;
            starPattern = patron;
            starText = text;
            continue;
        }
        if (patron.starts_with("[]")) {
            patron.remove_prefix(2);
            continue;
        }
        const size_t length = characterLength(text);
        if (!patron.empty() && takeMatch(text.substr(0, length), patron)) {
            text.remove_prefix(length);
            continue;
        }
        if (!star)
            return false;
        takeCharacter(starText);
        text = starText;
        patron = starPattern;
    }
    for (;;) {
        if (patron.starts_with('*'))
            patron.remove_prefix(1);
        else if (patron.starts_with("[]"))
            patron.remove_prefix(2);
        else
            return patron.empty();
    }
}

// The plain text of a folded pattern whose stars at the ends were removed; nullopt when it contains
// other wildcards.
std::optional<std::string> plainPiece(std::string_view pattern)
{
    std::string piece;
    while (!pattern.empty()) {
        std::string_view c = takeCharacter(pattern);
        if (c == "*" || c == "?" || c == "#")
            return std::nullopt;
        if (c == "[") { // a set of one character is that character
            c = pattern.substr(0, pattern.empty() ? 0 : characterLength(pattern));
            if (c.empty() || c == "]" || !pattern.substr(c.size()).starts_with(']'))
                return std::nullopt;
            pattern.remove_prefix(c.size() + 1);
        }
        piece += c;
    }
    return piece;
}

// Whether no letter of the text outside ASCII folds to one within: true for ASCII and for Latin-1
// letters except ß. Not for combining accents, which join the letter before them.
bool keepsAscii(std::string_view s)
{
    for (size_t i = 0; i < s.size(); ++i) {
        if (isAscii(s[i]))
            continue;
        const bool latin = s[i] == '\xC2' || s[i] == '\xC3';
        if (!latin || i + 1 == s.size() || (s[i + 1] & 0xC0) != 0x80
            || s.substr(i, 2) == "\xC3\x9F")
            return false;
        ++i;
    }
    return true;
}

bool sameLetters(const char *text, std::string_view folded)
{
    for (const char c : folded)
        if (lower(*text++) != c)
            return false;
    return true;
}

// Whether a text of ASCII or already folded letters contains the folded one.
bool matches(std::string_view text, std::string_view folded)
{
    for (size_t i = 0; i + folded.size() <= text.size(); ++i)
        if (sameLetters(text.data() + i, folded))
            return true;
    return false;
}

} // namespace

std::string fold(std::string_view utf8)
{
    const auto &table = letterTable();
    std::string out;
    out.reserve(utf8.size());
    for (size_t at = 0; at < utf8.size();) {
        const Letter letter = nextLetter(table, utf8, at);
        if (!letter.plain)
            return folded(utf8, QString::NormalizationForm_C).toStdString();
        appendUtf8(out, letter.folded);
    }
    return out;
}

std::string plainOf(std::string_view utf8)
{
    const auto &table = letterTable();
    std::string out;
    out.reserve(utf8.size());
    for (size_t at = 0; at < utf8.size();) {
        const Letter letter = nextLetter(table, utf8, at);
        if (!letter.plain)
            return asPlain(folded(utf8, QString::NormalizationForm_D)).toStdString();
        appendUtf8(out, letter.plain);
    }
    return out;
}

int compareText(std::string_view a, std::string_view b)
{
    const auto &table = letterTable();
    // Most texts differ early, or are equal, within ASCII.
    size_t common = 0;
    while (common < a.size() && common < b.size() && isAscii(a[common])
           && lower(a[common]) == lower(b[common]))
        ++common;
    size_t atA = common, atB = common;
    // The positions where the texts first differ in an accent.
    std::optional<std::pair<size_t, size_t>> accents;
    for (;;) {
        const size_t beforeA = atA, beforeB = atB;
        const bool endA = atA == a.size(), endB = atB == b.size();
        if (endA && endB && !accents)
            return 0;
        const Letter letterA = endA ? Letter{} : nextLetter(table, a, atA);
        const Letter letterB = endB ? Letter{} : nextLetter(table, b, atB);
        const bool simple = (endA || letterA.plain) && (endB || letterB.plain);
        if ((endA && endB) || !simple) {
            const auto [fromA, fromB] = accents.value_or(std::pair(beforeA, beforeB));
            return compareFolded(a.substr(fromA), b.substr(fromB));
        }
        if (letterA.plain != letterB.plain) // plain is 0 at the end of a text
            return letterA.plain < letterB.plain ? -1 : 1;
        if (letterA.folded != letterB.folded && !accents)
            accents.emplace(beforeA, beforeB);
    }
}

bool similar(std::string_view text, std::string_view patron) { return Pattern(patron).meets(text); }

Pattern::Pattern(std::string_view patron) : m_text(fold(patron))
{
    std::string_view rest = m_text;
    while (rest.starts_with('*'))
        rest.remove_prefix(1);
    const bool before = rest.size() < m_text.size();
    const size_t length = rest.size();
    // Cannot hit the star of "[*]", which is followed by its bracket.
    while (rest.ends_with('*'))
        rest.remove_suffix(1);
    const bool behind = rest.size() < length || (before && length == 0);
    if (auto piece = plainPiece(rest)) {
        m_kind = before ? (behind ? Contains : Ends) : behind ? Begins : Equal;
        m_text = std::move(*piece);
        m_simple = isAscii(m_text);
    }
}

bool Pattern::meets(std::string_view text) const
{
    std::string folded;
    if (m_simple ? !keepsAscii(text) : !isAscii(text)) {
        folded = fold(text);
        text = folded;
    }
    if (m_kind == General)
        return meetsPattern(text, m_text);
    if (text.size() < m_text.size())
        return false;
    switch (m_kind) {
    case Equal:
        return text.size() == m_text.size() && sameLetters(text.data(), m_text);
    case Begins:
        return sameLetters(text.data(), m_text);
    case Ends:
        return sameLetters(text.data() + (text.size() - m_text.size()), m_text);
    default:
        return matches(text, m_text);
    }
}

} // namespace jet
