#include "store/jet/engine_functions.h"

#include "store/errors.h"
#include "store/jet/moment.h"
#include "store/jet/text.h"
#include "store/money.h"
#include "store/value.h"

#include <QString>
#include <algorithm>
#include <charconv>
#include <cmath>
#include <memory>
#include <new>
#include <sqlite3.h>

namespace jet
{
namespace
{
using Arguments = sqlite3_value **;

bool IsNull(sqlite3_value *v) { return sqlite3_value_type(v) == SQLITE_NULL; }

// The bytes of a text or of a text kept as bytes; valid until the value is read otherwise.
std::string_view Bytes(sqlite3_value *v)
{
    const bool blob = sqlite3_value_type(v) == SQLITE_BLOB;
    const void *data = blob ? sqlite3_value_blob(v) : sqlite3_value_text(v);
    if (!data)
        return {};
    return {static_cast<const char *>(data), size_t(sqlite3_value_bytes(v))};
}

std::string NumberText(double x)
{
    if (std::abs(x) < 1e15 && x == std::floor(x))
        return std::to_string(qint64(x));
    return Valor(x).toText().toStdString();
}

// Any value as a text, written as the rest of the system writes it.
class Text
{
public:
    explicit Text(sqlite3_value *v)
    {
        if (sqlite3_value_type(v) == SQLITE_FLOAT) {
            m_own = NumberText(sqlite3_value_double(v));
            m_view = m_own;
        } else {
            m_view = Bytes(v);
        }
    }
    Text(const Text &) = delete;
    Text &operator=(const Text &) = delete;
    operator std::string_view() const { return m_view; }

private:
    std::string m_own;
    std::string_view m_view;
};

void GiveText(sqlite3_context *c, std::string_view s)
{
    sqlite3_result_text64(c, s.data(), s.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
}

// Half to even. A decimal such as 2.345 that no double holds exactly still counts as a half.
double RoundedTo(double x, int decimals)
{
    const double scale = std::pow(10.0, decimals);
    const double scaled = x * scale;
    // A double this large has no decimals left.
    if (!(std::abs(scaled) < 9e15))
        return x;
    const double half = std::floor(scaled) + 0.5;
    const bool isHalf = std::abs(scaled - half) <= 4e-16 * std::abs(scaled);
    return std::nearbyint(isHalf ? half : scaled) / scale;
}

// The functions. Where nothing else is said, a Null argument has been answered with Null before.

void Like(sqlite3_context *c, int, Arguments a)
{
    // The engine keeps what is set for as long as the pattern stays the same.
    const auto *pattern = static_cast<const Patron *>(sqlite3_get_auxdata(c, 1));
    std::unique_ptr<Patron> fresh;
    if (!pattern) {
        fresh = std::make_unique<Patron>(Text(a[1]));
        pattern = fresh.get();
    }
    sqlite3_result_int(c, pattern->Cumple(Text(a[0])));
    if (fresh)
        sqlite3_set_auxdata(c, 1, fresh.release(),
                            [](void *p) { delete static_cast<Patron *>(p); });
}

void ToMoneda(sqlite3_context *c, int, Arguments a)
{
    switch (sqlite3_value_numeric_type(a[0])) {
    case SQLITE_INTEGER:
        sqlite3_result_int64(c, sqlite3_value_int64(a[0]));
        return;
    case SQLITE_FLOAT:
        sqlite3_result_double(c, Moneda::Redondear(sqlite3_value_double(a[0])).ADoble());
        return;
    default:
        sqlite3_result_error(c, "No amount", -1);
    }
}

// A MEMO column takes a text that reads as a number for one. The same bytes it leaves alone.
void ToMemo(sqlite3_context *c, int, Arguments a)
{
    const Text text(a[0]);
    const std::string_view s = text;
    const bool likeNumber = s.find_first_not_of("0123456789+-.eE \t\n\v\f\r") == s.npos;
    if (likeNumber && !s.empty())
        sqlite3_result_blob64(c, s.data(), s.size(), SQLITE_TRANSIENT);
    else
        GiveText(c, s);
}

void ToText(sqlite3_context *c, int, Arguments a) { GiveText(c, Text(a[0])); }

void ToWhole(sqlite3_context *c, int, Arguments a)
{
    if (sqlite3_value_numeric_type(a[0]) == SQLITE_INTEGER)
        sqlite3_result_int64(c, sqlite3_value_int64(a[0]));
    else
        sqlite3_result_int64(c, Valor(sqlite3_value_double(a[0])).toLong());
}

void Floor(sqlite3_context *c, int, Arguments a)
{
    if (sqlite3_value_numeric_type(a[0]) == SQLITE_INTEGER)
        sqlite3_result_int64(c, sqlite3_value_int64(a[0]));
    else
        sqlite3_result_double(c, std::floor(sqlite3_value_double(a[0])));
}

void Round(sqlite3_context *c, int, Arguments a)
{
    const auto decimals = std::clamp<qint64>(sqlite3_value_int64(a[1]), 0, 15);
    if (sqlite3_value_numeric_type(a[0]) == SQLITE_INTEGER)
        sqlite3_result_int64(c, sqlite3_value_int64(a[0]));
    else
        sqlite3_result_double(c, RoundedTo(sqlite3_value_double(a[0]), int(decimals)));
}

void Val(sqlite3_context *c, int, Arguments a)
{
    const Text text(a[0]);
    std::string digits; // blanks between them do not count
    for (const char ch : std::string_view(text))
        if (ch != ' ' && ch != '\t' && ch != '\n')
            digits += ch;
    const char *begin = digits.data() + (digits.starts_with('+') ? 1 : 0);
    double x = 0;
    const auto read = std::from_chars(begin, digits.data() + digits.size(), x);
    sqlite3_result_double(c, read.ec == std::errc() && std::isfinite(x) ? x : 0);
}

// How many bytes the first characters have.
size_t Prefix(std::string_view s, qint64 characters)
{
    size_t n = 0;
    for (; n < s.size() && characters > 0; --characters)
        do
            ++n;
        while (n < s.size() && (static_cast<unsigned char>(s[n]) & 0xC0) == 0x80);
    return n;
}

void Mid(sqlite3_context *c, int n, Arguments a)
{
    const Text text(a[0]);
    std::string_view s = text;
    s.remove_prefix(Prefix(s, sqlite3_value_int64(a[1]) - 1));
    if (n == 3)
        s = s.substr(0, Prefix(s, sqlite3_value_int64(a[2])));
    GiveText(c, s);
}

void Right(sqlite3_context *c, int, Arguments a)
{
    const Text text(a[0]);
    const std::string_view s = text;
    const auto characters = std::ranges::count_if(
        s, [](char ch) { return (static_cast<unsigned char>(ch) & 0xC0) != 0x80; });
    const qint64 wanted = std::max<qint64>(sqlite3_value_int64(a[1]), 0);
    GiveText(c, s.substr(Prefix(s, characters - std::min<qint64>(wanted, characters))));
}

QString AsQString(sqlite3_value *v)
{
    const Text text(v);
    const std::string_view s = text;
    return QString::fromUtf8(s.data(), qsizetype(s.size()));
}

void Upper(sqlite3_context *c, int, Arguments a)
{
    GiveText(c, AsQString(a[0]).toUpper().toStdString());
}

void Lower(sqlite3_context *c, int, Arguments a)
{
    GiveText(c, AsQString(a[0]).toLower().toStdString());
}

// What is no day or time gives Null.
void DateAdd(sqlite3_context *c, int, Arguments a)
{
    const auto interval = IntervalFromText(Text(a[0]), false);
    const auto moment = MomentFromStorage(Text(a[2]));
    const qint64 count = Valor(sqlite3_value_double(a[1])).toLong();
    if (!interval || !moment)
        return;
    if (const auto sum = Added(*moment, *interval, count))
        GiveText(c, ToStorage(*sum));
}

void DateDiff(sqlite3_context *c, int, Arguments a)
{
    const auto interval = IntervalFromText(Text(a[0]), true);
    const auto from = MomentFromStorage(Text(a[1]));
    const auto to = MomentFromStorage(Text(a[2]));
    if (interval && from && to)
        sqlite3_result_int64(c, Difference(*from, *to, *interval));
}

// Nothing may be thrown through the engine.
template <void (*F)(sqlite3_context *, int, Arguments)>
void Guarded(sqlite3_context *c, int n, Arguments a)
{
    if (std::any_of(a, a + n, IsNull))
        return; // the result is Null until it is set
    try {
        F(c, n, a);
    } catch (const std::bad_alloc &) {
        sqlite3_result_error_nomem(c);
    }
}

int Collate(void *, int lengthA, const void *a, int lengthB, const void *b)
{
    return Comparar({static_cast<const char *>(a), size_t(lengthA)},
                    {static_cast<const char *>(b), size_t(lengthB)});
}

struct Function {
    const char *name;
    int arguments;
    void (*body)(sqlite3_context *, int, Arguments);
};
constexpr Function Functions[] = {
    {"jet_dateadd", 3, Guarded<DateAdd>}, {"jet_datediff", 3, Guarded<DateDiff>},
    {"jet_entero", 1, Guarded<ToWhole>},  {"jet_int", 1, Guarded<Floor>},
    {"jet_lcase", 1, Guarded<Lower>},     {"jet_like", 2, Guarded<Like>},
    {"jet_memo", 1, Guarded<ToMemo>},     {"jet_mid", 2, Guarded<Mid>},
    {"jet_mid", 3, Guarded<Mid>},         {"jet_moneda", 1, Guarded<ToMoneda>},
    {"jet_right", 2, Guarded<Right>},     {"jet_round", 2, Guarded<Round>},
    {"jet_texto", 1, Guarded<ToText>},    {"jet_ucase", 1, Guarded<Upper>},
    {"jet_val", 1, Guarded<Val>},
};
} // namespace

void RegistrarFunciones(sqlite3 *conexion)
{
    const auto check = [conexion](int result) {
        if (result != SQLITE_OK)
            throw ErrorDeAlmacen(ErrorNum::Interno, QString::fromUtf8(sqlite3_errmsg(conexion)));
    };
    check(sqlite3_create_collation_v2(conexion, "JET", SQLITE_UTF8, nullptr, Collate, nullptr));
    for (const Function &f : Functions)
        check(sqlite3_create_function_v2(conexion, f.name, f.arguments,
                                         SQLITE_UTF8 | SQLITE_DETERMINISTIC, nullptr, f.body,
                                         nullptr, nullptr, nullptr));
}

} // namespace jet
