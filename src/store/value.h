// A value on its way through the store: typed, with an explicit Null.
#pragma once

#include "store/money.h"

#include <QDateTime>
#include <QString>
#include <variant>

namespace store
{

/// Column types of the data files, named as the files declare them.
enum class ColumnType {
    Counter, // numbered by the engine
    Byte,
    Smallint,
    Long,
    Single,
    Double,
    Currency,
    Date,
    Time,
    YesNo,
    Text,
    Memo,
    None, // of an expression whose type is known only once it is computed
};

bool isTextual(ColumnType t);  ///< Text and Memo
bool isMoment(ColumnType t);   ///< Date and Time
bool isWhole(ColumnType t);    ///< the integer types and Yes/No
bool isFloating(ColumnType t); ///< Single, Double and Currency

/// Null, Yes/No, integer, floating-point number, amount, date, time, date with time, or text.
///
/// The to... conversions never fail: Null and whatever cannot be converted give 0, false, an
/// invalid date or time, or an empty text. Check isNull() where Null has a meaning of its own.
class Value
{
public:
    /// Null. So are invalid dates and times passed to the constructors below.
    Value() = default;
    Value(std::nullptr_t) {}
    Value(bool b) : m_v(b) {}
    Value(int n) : m_v(qint64(n)) {}
    Value(long n) : m_v(qint64(n)) {}
    Value(long long n) : m_v(qint64(n)) {}
    Value(double x) : m_v(x) {}
    Value(Moneda m) : m_v(m) {}
    Value(QDate d)
    {
        if (d.isValid())
            m_v = d;
    }
    Value(QTime t)
    {
        if (t.isValid())
            m_v = t;
    }
    Value(const QDateTime &t)
    {
        if (t.isValid())
            m_v = t;
    }
    Value(const QString &s) : m_v(s) {}
    Value(QString &&s) : m_v(std::move(s)) {}
    Value(const char16_t *s) : m_v(QString::fromUtf16(s)) {}
    Value(const char *) = delete; // text is QString; a plain literal would become Yes/No

    /// Whether it is Null.
    bool isNull() const { return m_v.index() == 0; }
    /// The content if it is of type T, one of Variant's; else nullptr.
    template <typename T>
    const T *is() const
    {
        return std::get_if<T>(&m_v);
    }

    int toInt() const { return int(toLong()); } ///< toLong() without its upper bits
    qint64 toLong() const;                      ///< rounded half to even; Yes is -1
    double toDouble() const;                    ///< Yes is -1
    Moneda toMoneda() const;                    ///< rounded as Moneda::round does
    bool toBool() const;                        ///< any number but 0 is Yes
    QDate toDate() const;                       ///< also from text as YYYY-MM-DD
    QTime toTime() const;                       ///< also from text as HH:MM:SS
    QString toText() const; ///< dates as YYYY-MM-DD, times as HH:MM:SS, numbers with a point

    friend bool operator==(const Value &, const Value &) = default;

    using Variant = std::variant<std::monostate, bool, qint64, double, Moneda, QDate, QTime,
                                 QDateTime, QString>;
    /// The content itself, for std::visit.
    const Variant &contentOf() const { return m_v; }

private:
    Variant m_v;
};

} // namespace store
