// Exact amounts: every price, debt, stock and daily intake of the clinic is a Moneda.
#pragma once

#include <QString>
#include <QtGlobal>
#include <compare>
#include <optional>

/// An amount with exactly four decimals, held as a whole number of ten-thousandths.
/// Sums and differences are exact; a product is rounded to four decimals, half to even.
class Moneda
{
public:
    constexpr Moneda() = default;

    /// @param n whole units; fits while |n| stays below 9.2e14
    static constexpr Moneda whole(qint64 n) { return fromTenThousandths(n * Scale); }
    /// @param n ten-thousandths of a unit
    static constexpr Moneda fromTenThousandths(qint64 n)
    {
        Moneda m;
        m.m_n = n;
        return m;
    }
    /// Rounds to four decimals, half to even. The only way in for a floating number.
    /// Values out of range and NaN give the nearest end of the range and 0.
    static Moneda round(double x);
    /// Reads a number as a user types it, with @p separator as decimal mark.
    /// @return nullopt when the text is no number
    static std::optional<Moneda> fromText(const QString &text, QChar separator = u'.');

    constexpr qint64 tenThousandths() const { return m_n; }
    double toDouble() const { return double(m_n) / double(Scale); }
    /// Plain digits with a point and only the decimals that are needed ("12.5", "-0.25", "7").
    QString toText() const;

    friend constexpr Moneda operator+(Moneda a, Moneda b)
    {
        return fromTenThousandths(a.m_n + b.m_n);
    }
    friend constexpr Moneda operator-(Moneda a, Moneda b)
    {
        return fromTenThousandths(a.m_n - b.m_n);
    }
    friend constexpr Moneda operator-(Moneda a) { return fromTenThousandths(-a.m_n); }
    friend constexpr Moneda operator*(Moneda a, qint64 n) { return fromTenThousandths(a.m_n * n); }
    friend Moneda operator*(Moneda a, Moneda b);
    friend constexpr auto operator<=>(Moneda, Moneda) = default;

private:
    static constexpr qint64 Scale = 10000;
    qint64 m_n = 0;
};
