// One value as it crosses the store: typed, with a visible Null.
#pragma once

#include "store/money.h"

#include <QDateTime>
#include <QString>
#include <variant>

/// Column types of the data files, named as the files declare them.
enum class Tipo {
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
    Ninguno, // an expression whose type is known only when it is computed
};

/// Null, Yes/No, whole number, floating number, amount, day, time, day with time or text.
///
/// The to... readers never fail: Null and what cannot be converted read as 0, false, an invalid day
/// or time, or the empty text. Ask EsNulo() where Null means something of its own.
class Valor
{
public:
    Valor() = default;
    Valor(std::nullptr_t) {}
    Valor(bool b) : m_v(b) {}
    Valor(int n) : m_v(qint64(n)) {}
    Valor(long n) : m_v(qint64(n)) {}
    Valor(long long n) : m_v(qint64(n)) {}
    Valor(double x) : m_v(x) {}
    Valor(Moneda m) : m_v(m) {}
    Valor(QDate d)
    {
        if (d.isValid())
            m_v = d;
    }
    Valor(QTime t)
    {
        if (t.isValid())
            m_v = t;
    }
    Valor(const QDateTime &t)
    {
        if (t.isValid())
            m_v = t;
    }
    Valor(const QString &s) : m_v(s) {}
    Valor(QString &&s) : m_v(std::move(s)) {}
    Valor(const char16_t *s) : m_v(QString::fromUtf16(s)) {}
    Valor(const char *) = delete; // texts are QString; a plain literal would read as Yes/No

    bool EsNulo() const { return m_v.index() == 0; }
    template <typename T>
    const T *Es() const
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

    friend bool operator==(const Valor &, const Valor &) = default;

    using Variante = std::variant<std::monostate, bool, qint64, double, Moneda, QDate, QTime,
                                  QDateTime, QString>;
    const Variante &Contenido() const { return m_v; }

private:
    Variante m_v;
};
