// How the system compares text: letter case does not matter, and accents only break ties in the
// order.
#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace jet
{

/// The form in which texts that differ only in letter case are equal (É and é, ß and SS). Accents
/// stay. UTF-8 in and out.
std::string fold(std::string_view utf8);

/// fold() without accents as well, so that Álvarez equals ALVAREZ; for lenient searches. UTF-8 in
/// and out.
std::string plainOf(std::string_view utf8);

/// Compares two UTF-8 texts by their letters and, if those are equal, by their accents (Alba,
/// Álvarez, andrea).
/// @return negative, 0 or positive; 0 exactly when fold() makes them equal
int compareText(std::string_view a, std::string_view b);

/// Whether a text matches a LIKE pattern, both UTF-8: `*` is any text, `?` one character, `#` one
/// digit, `[a-z]` and `[!a-z]` are sets, `[*]` is the character itself; `%` and `_` are ordinary
/// characters. Letter case is ignored. A pattern with an unclosed bracket matches nothing.
bool similar(std::string_view text, std::string_view patron);

/// A LIKE pattern prepared for many texts. Most are plain text with a `*` before or after it, which
/// is matched by a simple search.
class Pattern
{
public:
    /// Prepares a pattern, see similar().
    explicit Pattern(std::string_view patron);
    /// Whether the text, UTF-8, matches.
    bool meets(std::string_view text) const;

private:
    enum Kind : char { Equal, Begins, Ends, Contains, General };
    Kind m_kind = General;
    bool m_simple = false; // m_text is plain ASCII, so most texts need no folding
    std::string m_text;    // folded plain text; the whole pattern if m_kind is General
};

} // namespace jet
