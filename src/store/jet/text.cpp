#include "store/jet/text.h"

#include <algorithm>

namespace jet
{
namespace
{
char Lower(char c) { return c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c; }
bool IsAscii(char c) { return static_cast<signed char>(c) >= 0; }
bool IsAscii(std::string_view s)
{
    return std::ranges::all_of(s, [](char c) { return IsAscii(c); });
}

QString Folded(std::string_view s, QString::NormalizationForm form)
{
    QString text = QString::fromUtf8(s.data(), qsizetype(s.size())).toCaseFolded();
    if (text.contains(u'ß')) // Qt folds one letter to one letter
        text.replace(u'ß', QLatin1String("ss"));
    return text.normalized(form);
}

int Sign(qsizetype n) { return n < 0 ? -1 : n > 0 ? 1 : 0; }

// The letters without their accents.
QString Plain(const QString &decomposed)
{
    QString out;
    out.reserve(decomposed.size());
    for (const QChar c : decomposed)
        if (!c.isMark())
            out += c;
    return out;
}

int CompareFolded(std::string_view a, std::string_view b)
{
    const QString da = Folded(a, QString::NormalizationForm_D);
    const QString db = Folded(b, QString::NormalizationForm_D);
    if (const int plain = Plain(da).compare(Plain(db)))
        return Sign(plain);
    return Sign(da.compare(db));
}

// How many bytes the character at the front has.
size_t CharacterLength(std::string_view s)
{
    size_t n = 1;
    while (n < s.size() && (static_cast<unsigned char>(s[n]) & 0xC0) == 0x80)
        ++n;
    return n;
}

std::string_view TakeCharacter(std::string_view &s)
{
    const std::string_view c = s.substr(0, CharacterLength(s));
    s.remove_prefix(c.size());
    return c;
}

bool SameCharacter(std::string_view text, std::string_view pattern)
{
    return text.size() == 1 ? pattern.size() == 1 && Lower(text[0]) == Lower(pattern[0])
                            : text == pattern;
}

// Ranges follow the order of texts, so that [a-z] holds the ñ and the accented letters.
bool InSet(std::string_view c, std::string_view set)
{
    while (!set.empty()) {
        const std::string_view low = TakeCharacter(set);
        if (set.size() > 1 && set[0] == '-') {
            set.remove_prefix(1);
            const std::string_view high = TakeCharacter(set);
            if (Comparar(low, c) <= 0 && Comparar(c, high) <= 0)
                return true;
        } else if (SameCharacter(c, low)) {
            return true;
        }
    }
    return false;
}

// Whether the character meets the piece at the front of the pattern, which is no '*'. Takes the
// piece off the pattern when it does.
bool TakeMatch(std::string_view c, std::string_view &pattern)
{
    const std::string_view piece = pattern.substr(0, CharacterLength(pattern));
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
        met = InSet(c, set) != excluded;
    } else {
        met = SameCharacter(c, piece);
    }
    if (met)
        pattern.remove_prefix(length);
    return met;
}

// Every bracket that opens is closed.
bool IsWellFormed(std::string_view pattern)
{
    for (size_t open = pattern.find('['); open != pattern.npos;) {
        const size_t close = pattern.find(']', open);
        if (close == pattern.npos)
            return false;
        open = pattern.find('[', close);
    }
    return true;
}
} // namespace

std::string Plegar(std::string_view utf8)
{
    if (!IsAscii(utf8))
        return Folded(utf8, QString::NormalizationForm_C).toStdString();
    std::string out(utf8);
    std::ranges::transform(out, out.begin(), Lower);
    return out;
}

int Comparar(std::string_view a, std::string_view b)
{
    const size_t common = std::min(a.size(), b.size());
    size_t i = 0;
    while (i < common && IsAscii(a[i]) && Lower(a[i]) == Lower(b[i]))
        ++i;
    const std::string_view restA = a.substr(i);
    const std::string_view restB = b.substr(i);
    const bool plainA = restA.empty() || IsAscii(restA[0]);
    const bool plainB = restB.empty() || IsAscii(restB[0]);
    // A letter that folds away (an accent alone) may follow, so the rest decides as a whole.
    if (!plainA || !plainB)
        return CompareFolded(restA, restB);
    if (restA.empty() || restB.empty())
        return Sign(qsizetype(restA.size()) - qsizetype(restB.size()));
    return Lower(restA[0]) < Lower(restB[0]) ? -1 : 1;
}

bool Parecido(std::string_view texto, std::string_view patron)
{
    return ParecidoPlegado(texto, Plegar(patron));
}

bool ParecidoPlegado(std::string_view texto, std::string_view patron)
{
    std::string folded;
    if (!IsAscii(texto)) {
        folded = Plegar(texto);
        texto = folded;
    }
    if (!IsWellFormed(patron))
        return false;

    // One '*' at a time is enough to come back to: what an earlier one could match, so can this.
    bool star = false;
    std::string_view starPattern;
    std::string_view starText;
    while (!texto.empty()) {
        if (patron.starts_with('*')) {
            patron.remove_prefix(1);
            star = true;
            starPattern = patron;
            starText = texto;
            continue;
        }
        if (patron.starts_with("[]")) {
            patron.remove_prefix(2);
            continue;
        }
        const size_t length = CharacterLength(texto);
        if (!patron.empty() && TakeMatch(texto.substr(0, length), patron)) {
            texto.remove_prefix(length);
            continue;
        }
        if (!star)
            return false;
        TakeCharacter(starText);
        texto = starText;
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

} // namespace jet
