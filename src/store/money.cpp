#include "store/money.h"

#include <cmath>
#include <limits>

namespace
{
// Half to even. A value within the noise of its own last bits of a half counts as one: 1.00005 is
// no exact binary number, yet it is a half of a ten-thousandth to whoever wrote it.
qint64 AlParMasCercano(long double x)
{
    constexpr auto Max = std::numeric_limits<qint64>::max();
    constexpr auto Min = std::numeric_limits<qint64>::min();
    if (std::isnan(x))
        return 0;
    if (x >= static_cast<long double>(Max))
        return Max;
    if (x <= static_cast<long double>(Min))
        return Min;
    const long double abajo = std::floor(x);
    const long double ruido = std::fabs(x) * 0x1p-50L;
    if (std::fabs(x - abajo - 0.5L) <= ruido) {
        const auto n = qint64(abajo);
        return n % 2 == 0 ? n : n + 1;
    }
    return qint64(std::nearbyintl(x));
}
} // namespace

Moneda Moneda::Redondear(double x)
{
    return DeDiezmilesimos(AlParMasCercano(static_cast<long double>(x) * Escala));
}

std::optional<Moneda> Moneda::DeTexto(const QString &texto, QChar separador)
{
    QString t = texto.trimmed();
    if (separador != u'.') {
        if (t.contains(u'.'))
            return std::nullopt;
        t.replace(separador, u'.');
    }
    bool bien = false;
    const double x = t.toDouble(&bien);
    if (!bien || !std::isfinite(x))
        return std::nullopt;
    return Redondear(x);
}

QString Moneda::ATexto() const
{
    const quint64 n = m_n < 0 ? 0 - quint64(m_n) : quint64(m_n);
    QString s = QString::number(n / Escala);
    quint64 resto = n % Escala;
    if (resto != 0) {
        QString decimales = QString::number(resto).rightJustified(4, u'0');
        while (decimales.endsWith(u'0'))
            decimales.chop(1);
        s += u'.' + decimales;
    }
    return m_n < 0 ? u'-' + s : s;
}

Moneda operator*(Moneda a, Moneda b)
{
    const long double p = static_cast<long double>(a.m_n) * static_cast<long double>(b.m_n);
    return Moneda::DeDiezmilesimos(AlParMasCercano(p / Moneda::Escala));
}
