#include "store/money.h"

#include <cmath>
#include <limits>

namespace
{
// Rounds half to even. A value within rounding error of a half counts as one: 1.00005 has no exact
// binary form, but whoever wrote it meant half of a ten-thousandth.
qint64 toNearestEven(long double x)
{
    constexpr auto Max = std::numeric_limits<qint64>::max();
    constexpr auto Min = std::numeric_limits<qint64>::min();
    if (std::isnan(x))
        return 0;
    if (x >= static_cast<long double>(Max))
        return Max;
    if (x <= static_cast<long double>(Min))
        return Min;
    const long double below = std::floor(x);
    const long double noise = std::fabs(x) * 0x1p-50L;
    if (std::fabs(x - below - 0.5L) <= noise) {
        const auto n = qint64(below);
        return n % 2 == 0 ? n : n + 1;
    }
    return qint64(std::nearbyintl(x));
}
} // namespace

Moneda Moneda::round(double x)
{
    return fromTenThousandths(toNearestEven(static_cast<long double>(x) * Scale));
}

std::optional<Moneda> Moneda::fromText(const QString &text, QChar separator)
{
    QString t = text.trimmed();
    if (separator != u'.') {
        if (t.contains(u'.'))
            return std::nullopt;
        t.replace(separator, u'.');
    }
    bool well = false;
    const double x = t.toDouble(&well);
    if (!well || !std::isfinite(x))
        return std::nullopt;
    return round(x);
}

QString Moneda::toText() const
{
    const quint64 n = m_n < 0 ? 0 - quint64(m_n) : quint64(m_n);
    QString s = QString::number(n / Scale);
    quint64 rest = n % Scale;
    if (rest != 0) {
        QString decimals = QString::number(rest).rightJustified(4, u'0');
        while (decimals.endsWith(u'0'))
            decimals.chop(1);
        s += u'.' + decimals;
    }
    return m_n < 0 ? u'-' + s : s;
}

Moneda operator*(Moneda a, Moneda b)
{
    const long double p = static_cast<long double>(a.m_n) * static_cast<long double>(b.m_n);
    return Moneda::fromTenThousandths(toNearestEven(p / Moneda::Scale));
}
