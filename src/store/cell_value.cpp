#include "store/engine.h"

using namespace store;

namespace
{

int digits(const char *p, int n)
{
    int x = 0;
    for (int i = 0; i < n; ++i) {
        if (p[i] < '0' || p[i] > '9')
            return -1;
        x = x * 10 + (p[i] - '0');
    }
    return x;
}

QDate readDay(std::string_view t)
{
    if (t.size() < 10 || t[4] != '-' || t[7] != '-')
        return {};
    const int a = digits(t.data(), 4), m = digits(t.data() + 5, 2), d = digits(t.data() + 8, 2);
    return a < 0 || m < 0 || d < 0 ? QDate() : QDate(a, m, d);
}

QTime readHour(std::string_view t)
{
    if (t.size() < 5 || t[2] != ':')
        return {};
    const int h = digits(t.data(), 2), m = digits(t.data() + 3, 2);
    const int s = t.size() >= 8 && t[5] == ':' ? digits(t.data() + 6, 2) : 0;
    return h < 0 || m < 0 || s < 0 ? QTime() : QTime(h, m, s);
}

} // namespace

Value store::cellValue(Statement::Kind kind, qint64 whole, double floating, std::string_view text,
                       ColumnType type)
{
    using Kind = Statement::Kind;
    if (kind == Kind::Null)
        return {};
    if (kind == Kind::Text) {
        switch (type) {
        case ColumnType::Date:
            if (const QDate d = readDay(text); d.isValid()) {
                if (text.size() <= 10)
                    return d;
                const QTime t = readHour(text.substr(11));
                return t.isValid() ? Value(QDateTime(d, t)) : Value(d);
            }
            break; // written by another program: keep it visible as text
        case ColumnType::Time:
            if (const QTime t = readHour(text.size() > 10 ? text.substr(11) : text); t.isValid())
                return t;
            break;
        case ColumnType::Text:
        case ColumnType::Memo:
        case ColumnType::None:
            break;
        default: {
            const Value v(QString::fromUtf8(text.data(), qsizetype(text.size())));
            if (type == ColumnType::Currency)
                return v.toMoneda();
            if (type == ColumnType::YesNo)
                return v.toBool();
            if (type == ColumnType::Single || type == ColumnType::Double)
                return v.toDouble();
            return v.toLong();
        }
        }
        return QString::fromUtf8(text.data(), qsizetype(text.size()));
    }
    const bool isWhole = kind == Kind::Whole;
    switch (type) {
    case ColumnType::Currency:
        return isWhole ? Moneda::whole(whole) : Moneda::round(floating);
    case ColumnType::YesNo:
        return isWhole ? whole != 0 : floating != 0.0;
    case ColumnType::Single:
    case ColumnType::Double:
        return isWhole ? double(whole) : floating;
    case ColumnType::Text:
    case ColumnType::Memo:
        return isWhole ? Value(whole).toText() : Value(floating).toText();
    case ColumnType::None:
        return isWhole ? Value(whole) : Value(floating);
    default:
        return isWhole ? Value(whole) : Value(Value(floating).toLong());
    }
}

Value Statement::read(int column, ColumnType type) const
{
    const Kind kind = kindOf(column);
    return cellValue(kind, kind == Kind::Whole ? whole(column) : 0,
                     kind == Kind::Floating ? floating(column) : 0.0,
                     kind == Kind::Text ? text(column) : std::string_view(), type);
}
