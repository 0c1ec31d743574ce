// How the system compares text: without regard to letter case, accents counting only as a
// tie-break.
#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace jet
{

/// The form under which two texts that differ only in letter case are one (É and é, ß and SS).
/// Accents stay. UTF-8 in, UTF-8 out.
std::string fold(std::string_view utf8);

/// The letters alone: neither case nor accents (Álvarez and ALVAREZ). For searches that forgive.
std::string plainOf(std::string_view utf8);

/// Order of texts, negative, 0 or positive: plain letters first, accents as a tie-break
/// (Alba, Álvarez, andrea). 0 exactly when Plegar gives the same form for both.
int compareText(std::string_view a, std::string_view b);

/// LIKE: `*` any text, `?` one character, `#` one digit, `[a-z]` and `[!a-z]` sets, `[*]` the
/// character itself; `%` and `_` are plain. Letter case is ignored. A pattern whose bracket is
/// never closed matches nothing.
bool similar(std::string_view text, std::string_view patron);

/// A pattern made ready for many texts. Most are a piece of plain text with `*` before or behind
/// it, which is looked for as such.
class Pattern
{
public:
    explicit Pattern(std::string_view patron);
    bool meets(std::string_view text) const;

private:
    enum Kind : char { Equal, Begins, Ends, Contains, General };
    Kind m_kind = General;
    bool m_simple = false; // a piece of ASCII, which most texts need not be folded for
    std::string m_text;    // folded; the pattern itself when it is General
};

} // namespace jet
