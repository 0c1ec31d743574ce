// Exact amounts: every price, debt, stock level and daily intake of the clinic is a Moneda.
#pragma once

#include <QString>
#include <QtGlobal>
#include <compare>
#include <optional>

/// An amount with exactly four decimals, held as an integer number of ten-thousandths.
/// Sums and differences are exact; a product is rounded to four decimals, half to even. Overflow of
/// the exact operations is not checked.
class Moneda
{
public:
    /// Zero.
    constexpr Moneda() = default;

    /// An amount of whole units. @param n must stay below 9.2e14 in magnitude
    static constexpr Moneda whole(qint64 n) { return fromTenThousandths(n * Scale); }
    /// An amount of ten-thousandths of a unit.
    static constexpr Moneda fromTenThousandths(qint64 n)
    {
        Moneda m;
        m.m_n = n;
        return m;
    }
    /// Rounds a number of units to four decimals, half to even; the only conversion from floating
    /// point. Values out of range give the nearest end of the range, NaN gives 0.
    static Moneda round(double x);
    /// Parses a number as the user types it.
    /// @param separator the decimal mark; with any other than a point, a point is refused
    /// @return nullopt when the text is not a finite number
    static std::optional<Moneda> fromText(const QString &text, QChar separator = u'.');

    /// The amount in ten-thousandths of a unit.
    constexpr qint64 tenThousandths() const { return m_n; }
    /// The amount in units, inexact.
    double toDouble() const { return double(m_n) / double(Scale); }
    /// Digits with a decimal point and only as many decimals as needed ("12.5", "-0.25", "7").
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
    /// Rounded to four decimals, half to even; out of range it gives the nearest end of the range.
    friend Moneda operator*(Moneda a, Moneda b);
    friend constexpr auto operator<=>(Moneda, Moneda) = default;

private:
    static constexpr qint64 Scale = 10000;
    qint64 m_n = 0;
};
