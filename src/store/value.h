// One value as it crosses the store: typed, with a visible Null.
#pragma once

#include "store/money.h"

#include <QDateTime>
#include <QString>
#include <variant>

namespace store
{

/// Column types of the data files, named as the files declare them.
enum class ColumnType {
    Counter, // identity, numbered by the engine
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
    None, // an expression whose type is known only when it is computed
};

bool isTextual(ColumnType t); ///< Text and Memo
bool isMoment(ColumnType t);  ///< days and times
bool isWhole(ColumnType t);   ///< whole numbers, Yes/No among them
bool isFloating(ColumnType t);

/// Null, Yes/No, whole number, floating number, amount, day, time, day with time or text.
///
/// The to... readers never fail: Null and what cannot be converted read as 0, false, an invalid day
/// or time, or the empty text. Ask isNull() where Null means something of its own.
class Value
{
public:
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
    Value(const char *) = delete; // texts are QString; a plain literal would read as Yes/No

    bool isNull() const { return m_v.index() == 0; }
    template <typename T>
    const T *is() const
    {
        return std::get_if<T>(&m_v);
    }

    int toInt() const { return int(toLong()); }
    qint64 toLong() const;
    double toDouble() const;
    Moneda toMoneda() const;
    bool toBool() const; ///< any number but 0 is Yes
    QDate toDate() const;
    QTime toTime() const;
    QString toText() const; ///< days as YYYY-MM-DD, times as HH:MM:SS, numbers with a point

    friend bool operator==(const Value &, const Value &) = default;

    using Variant = std::variant<std::monostate, bool, qint64, double, Moneda, QDate, QTime,
                                 QDateTime, QString>;
    const Variant &contentOf() const { return m_v; }

private:
    Variant m_v;
};

} // namespace store
