#include "store/sqlcipher/functions.h"

#include "store/column_value.h"
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

using namespace store;
using namespace jet;

namespace sqlcipher
{
namespace
{
using Arguments = sqlite3_value **;

bool isNull(sqlite3_value *v) { return sqlite3_value_type(v) == SQLITE_NULL; }

// The bytes of text or of a blob; valid until the value is read in another way.
std::string_view bytes(sqlite3_value *v)
{
    const bool blob = sqlite3_value_type(v) == SQLITE_BLOB;
    const void *data = blob ? sqlite3_value_blob(v) : sqlite3_value_text(v);
    if (!data)
        return {};
    return {static_cast<const char *>(data), size_t(sqlite3_value_bytes(v))};
}

std::string numberText(double x)
{
    if (std::abs(x) < 1e15 && x == std::floor(x))
        return std::to_string(qint64(x));
    return Value(x).toText().toStdString();
}

// Any value as text, in the same form as in the rest of the system.
class Text
{
public:
    explicit Text(sqlite3_value *v)
    {
        if (sqlite3_value_type(v) == SQLITE_FLOAT) {
            m_own = numberText(sqlite3_value_double(v));
            m_view = m_own;
        } else {
            m_view = bytes(v);
        }
    }
    Text(const Text &) = delete;
    Text &operator=(const Text &) = delete;
    operator std::string_view() const { return m_view; }

private:
    std::string m_own;
    std::string_view m_view;
};

void giveText(sqlite3_context *c, std::string_view s)
{
    sqlite3_result_text64(c, s.data(), s.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
}

// Rounds half to even. A decimal such as 2.345, which no double holds exactly, counts as a half.
double roundedTo(double x, int decimals)
{
    const double scale = std::pow(10.0, decimals);
    const double scaled = x * scale;
    // A double this large has no decimals.
    if (!(std::abs(scaled) < 9e15))
        return x;
    const double half = std::floor(scaled) + 0.5;
    const bool isHalf = std::abs(scaled - half) <= 4e-16 * std::abs(scaled);
    return std::nearbyint(isHalf ? half : scaled) / scale;
}

// The functions. guarded() returns Null for a Null argument unless TakesNull is set.

void like(sqlite3_context *c, int, Arguments a)
{
    // The engine keeps the auxiliary data as long as the pattern is the same.
    const auto *pattern = static_cast<const Pattern *>(sqlite3_get_auxdata(c, 1));
    std::unique_ptr<Pattern> fresh;
    if (!pattern) {
        fresh = std::make_unique<Pattern>(Text(a[1]));
        pattern = fresh.get();
    }
    sqlite3_result_int(c, pattern->meets(Text(a[0])));
    if (fresh)
        sqlite3_set_auxdata(c, 1, fresh.release(),
                            [](void *p) { delete static_cast<Pattern *>(p); });
}

void toMoney(sqlite3_context *c, int, Arguments a)
{
    switch (sqlite3_value_numeric_type(a[0])) {
    case SQLITE_INTEGER:
        sqlite3_result_int64(c, sqlite3_value_int64(a[0]));
        return;
    case SQLITE_FLOAT:
        sqlite3_result_double(c, Moneda::round(sqlite3_value_double(a[0])).toDouble());
        return;
    default:
        throw StoreError(ErrorNumber::TypeMismatch, QStringLiteral("No amount"));
    }
}

// A MEMO column would convert text that reads as a number to one, but leaves a blob alone.
void toMemo(sqlite3_context *c, int, Arguments a)
{
    const Text text(a[0]);
    const std::string_view s = text;
    const bool likeNumber = s.find_first_not_of("0123456789+-.eE \t\n\v\f\r") == s.npos;
    if (likeNumber && !s.empty())
        sqlite3_result_blob64(c, s.data(), s.size(), SQLITE_TRANSIENT);
    else
        giveText(c, s);
}

void giveText(sqlite3_context *c, const QString &text) { giveText(c, text.toStdString()); }

// Reports a StoreError as a result code, which errorNumberOf() turns back.
void GiveError(sqlite3_context *c, const StoreError &e)
{
    sqlite3_result_error(c, e.description.toUtf8().constData(), -1);
    sqlite3_result_error_code(c, e.number == ErrorNumber::Overflow      ? SQLITE_RANGE
                                 : e.number == ErrorNumber::TextTooLong ? SQLITE_TOOBIG
                                                                        : SQLITE_MISMATCH);
}

Value ValueOf(sqlite3_value *v)
{
    switch (sqlite3_value_type(v)) {
    case SQLITE_NULL:
        return {};
    case SQLITE_INTEGER:
        return qint64(sqlite3_value_int64(v));
    case SQLITE_FLOAT:
        return sqlite3_value_double(v);
    default: {
        const std::string_view s = bytes(v);
        return QString::fromUtf8(s.data(), qsizetype(s.size()));
    }
    }
}

// Passes a computed value through a column's gate. Arguments: value, column name, type, width.
void ToColumn(sqlite3_context *c, int, Arguments a)
{
    auto *column = static_cast<Column *>(sqlite3_get_auxdata(c, 1));
    std::unique_ptr<Column> fresh;
    if (!column) {
        fresh = std::make_unique<Column>(Column{std::string(bytes(a[1])),
                                                ColumnType(sqlite3_value_int(a[2])),
                                                sqlite3_value_int(a[3])});
        column = fresh.get();
    }
    const Value v = toColumn(ValueOf(a[0]), *column);
    if (v.isNull())
        sqlite3_result_null(c);
    else if (const auto *n = v.is<qint64>())
        sqlite3_result_int64(c, *n);
    else if (const auto *b = v.is<bool>())
        sqlite3_result_int(c, *b ? -1 : 0);
    else if (v.is<double>() || v.is<Moneda>())
        sqlite3_result_double(c, v.toDouble());
    else
        giveText(c, v.toText());
    if (fresh)
        sqlite3_set_auxdata(c, 1, fresh.release(),
                            [](void *p) { delete static_cast<Column *>(p); });
}

void toText(sqlite3_context *c, int, Arguments a) { giveText(c, Text(a[0])); }

void toWhole(sqlite3_context *c, int, Arguments a)
{
    if (sqlite3_value_numeric_type(a[0]) == SQLITE_INTEGER)
        sqlite3_result_int64(c, sqlite3_value_int64(a[0]));
    else
        sqlite3_result_int64(c, Value(sqlite3_value_double(a[0])).toLong());
}

void floor(sqlite3_context *c, int, Arguments a)
{
    if (sqlite3_value_numeric_type(a[0]) == SQLITE_INTEGER)
        sqlite3_result_int64(c, sqlite3_value_int64(a[0]));
    else
        sqlite3_result_double(c, std::floor(sqlite3_value_double(a[0])));
}

void round(sqlite3_context *c, int, Arguments a)
{
    const auto decimals = std::clamp<qint64>(sqlite3_value_int64(a[1]), 0, 15);
    if (sqlite3_value_numeric_type(a[0]) == SQLITE_INTEGER)
        sqlite3_result_int64(c, sqlite3_value_int64(a[0]));
    else
        sqlite3_result_double(c, roundedTo(sqlite3_value_double(a[0]), int(decimals)));
}

void val(sqlite3_context *c, int, Arguments a)
{
    const Text text(a[0]);
    std::string digits; // without blanks, which are ignored
    for (const char ch : std::string_view(text))
        if (ch != ' ' && ch != '\t' && ch != '\n')
            digits += ch;
    const char *begin = digits.data() + (digits.starts_with('+') ? 1 : 0);
    double x = 0;
    const auto read = std::from_chars(begin, digits.data() + digits.size(), x);
    sqlite3_result_double(c, read.ec == std::errc() && std::isfinite(x) ? x : 0);
}

// Number of bytes of the first characters.
size_t prefix(std::string_view s, qint64 characters)
{
    size_t n = 0;
    for (; n < s.size() && characters > 0; --characters)
        do
            ++n;
        while (n < s.size() && (static_cast<unsigned char>(s[n]) & 0xC0) == 0x80);
    return n;
}

void mid(sqlite3_context *c, int n, Arguments a)
{
    const Text text(a[0]);
    std::string_view s = text;
    s.remove_prefix(prefix(s, sqlite3_value_int64(a[1]) - 1));
    if (n == 3)
        s = s.substr(0, prefix(s, sqlite3_value_int64(a[2])));
    giveText(c, s);
}

void rightSide(sqlite3_context *c, int, Arguments a)
{
    const Text text(a[0]);
    const std::string_view s = text;
    const auto characters = std::ranges::count_if(
        s, [](char ch) { return (static_cast<unsigned char>(ch) & 0xC0) != 0x80; });
    const qint64 wanted = std::max<qint64>(sqlite3_value_int64(a[1]), 0);
    giveText(c, s.substr(prefix(s, characters - std::min<qint64>(wanted, characters))));
}

QString asQString(sqlite3_value *v)
{
    const Text text(v);
    const std::string_view s = text;
    return QString::fromUtf8(s.data(), qsizetype(s.size()));
}

void upper(sqlite3_context *c, int, Arguments a)
{
    giveText(c, asQString(a[0]).toUpper().toStdString());
}

void lower(sqlite3_context *c, int, Arguments a)
{
    giveText(c, asQString(a[0]).toLower().toStdString());
}

// Gives Null for text that is not a date or time.
void DateAdd(sqlite3_context *c, int, Arguments a)
{
    const auto interval = intervalFromText(Text(a[0]), false);
    const auto moment = momentFromStorage(Text(a[2]));
    const qint64 count = Value(sqlite3_value_double(a[1])).toLong();
    if (!interval || !moment)
        return;
    if (const auto sum = added(*moment, *interval, count))
        giveText(c, toStorage(*sum));
}

void DateDiff(sqlite3_context *c, int, Arguments a)
{
    const auto interval = intervalFromText(Text(a[0]), true);
    const auto from = momentFromStorage(Text(a[1]));
    const auto to = momentFromStorage(Text(a[2]));
    if (interval && from && to)
        sqlite3_result_int64(c, difference(*from, *to, *interval));
}

// Catches everything, as nothing may be thrown through the engine.
template <void (*F)(sqlite3_context *, int, Arguments), bool TakesNull = false>
void guarded(sqlite3_context *c, int n, Arguments a)
{
    if (!TakesNull && std::any_of(a, a + n, isNull))
        return; // the result is Null by default
    try {
        F(c, n, a);
    } catch (const StoreError &e) {
        GiveError(c, e);
    } catch (const std::bad_alloc &) {
        sqlite3_result_error_nomem(c);
    }
}

int collate(void *, int lengthA, const void *a, int lengthB, const void *b)
{
    return compareText({static_cast<const char *>(a), size_t(lengthA)},
                       {static_cast<const char *>(b), size_t(lengthB)});
}

struct Function {
    const char *name;
    int arguments;
    void (*body)(sqlite3_context *, int, Arguments);
};
constexpr Function Functions[] = {
    {"jet_column", 4, guarded<ToColumn, true>},
    {"jet_dateadd", 3, guarded<DateAdd>},
    {"jet_datediff", 3, guarded<DateDiff>},
    {"jet_entero", 1, guarded<toWhole>},
    {"jet_int", 1, guarded<floor>},
    {"jet_lcase", 1, guarded<lower>},
    {"jet_like", 2, guarded<like>},
    {"jet_memo", 1, guarded<toMemo>},
    {"jet_mid", 2, guarded<mid>},
    {"jet_mid", 3, guarded<mid>},
    {"jet_moneda", 1, guarded<toMoney>},
    {"jet_right", 2, guarded<rightSide>},
    {"jet_round", 2, guarded<round>},
    {"jet_texto", 1, guarded<toText>},
    {"jet_ucase", 1, guarded<upper>},
    {"jet_val", 1, guarded<val>},
};
} // namespace

void registerFunctions(sqlite3 *connection)
{
    const auto check = [connection](int result) {
        if (result != SQLITE_OK)
            throw StoreError(ErrorNumber::Internals, QString::fromUtf8(sqlite3_errmsg(connection)));
    };
    check(sqlite3_create_collation_v2(connection, "JET", SQLITE_UTF8, nullptr, collate, nullptr));
    for (const Function &f : Functions)
        check(sqlite3_create_function_v2(connection, f.name, f.arguments,
                                         SQLITE_UTF8 | SQLITE_DETERMINISTIC, nullptr, f.body,
                                         nullptr, nullptr, nullptr));
}

} // namespace sqlcipher
