#include "store/value.h"

#include <QLocale>
#include <cmath>

namespace
{
template <class... F>
struct Segun : F... {
    using F::operator()...;
};
template <class... F>
Segun(F...) -> Segun<F...>;

qint64 Entero(double x)
{
    if (std::isnan(x))
        return 0;
    if (x >= 9.2e18)
        return std::numeric_limits<qint64>::max();
    if (x <= -9.2e18)
        return std::numeric_limits<qint64>::min();
    return qint64(std::nearbyint(x));
}

QString NumeroATexto(double x)
{
    return QLocale::c().toString(x, 'g', QLocale::FloatingPointShortest);
}
} // namespace

qint64 Valor::toLong() const
{
    return std::visit(Segun{[](std::monostate) { return qint64(0); },
                            [](bool b) { return qint64(b ? -1 : 0); }, [](qint64 n) { return n; },
                            [](double x) { return Entero(x); },
                            [](Moneda m) { return Entero(m.ADoble()); },
                            [](const QString &s) {
                                bool bien = false;
                                const qint64 n = s.trimmed().toLongLong(&bien);
                                return bien ? n : Entero(s.trimmed().toDouble());
                            },
                            [](const auto &) { return qint64(0); }},
                      m_v);
}

double Valor::toDouble() const
{
    return std::visit(Segun{[](bool b) { return b ? -1.0 : 0.0; },
                            [](qint64 n) { return double(n); }, [](double x) { return x; },
                            [](Moneda m) { return m.ADoble(); },
                            [](const QString &s) { return s.trimmed().toDouble(); },
                            [](const auto &) { return 0.0; }},
                      m_v);
}

Moneda Valor::toMoneda() const
{
    if (const auto *m = Es<Moneda>())
        return *m;
    return Moneda::Redondear(toDouble());
}

bool Valor::toBool() const { return toDouble() != 0.0; }

QDate Valor::toDate() const
{
    if (const auto *d = Es<QDate>())
        return *d;
    if (const auto *t = Es<QDateTime>())
        return t->date();
    if (const auto *s = Es<QString>())
        return QDate::fromString(s->left(10), Qt::ISODate);
    return {};
}

QTime Valor::toTime() const
{
    if (const auto *t = Es<QTime>())
        return *t;
    if (const auto *t = Es<QDateTime>())
        return t->time();
    if (const auto *s = Es<QString>())
        return QTime::fromString(s->right(8), Qt::ISODate);
    return {};
}

QString Valor::toText() const
{
    return std::visit(
        Segun{[](std::monostate) { return QString(); },
              [](bool b) { return b ? QStringLiteral("-1") : QStringLiteral("0"); },
              [](qint64 n) { return QString::number(n); }, [](double x) { return NumeroATexto(x); },
              [](Moneda m) { return m.ATexto(); }, [](QDate d) { return d.toString(Qt::ISODate); },
              [](QTime t) { return t.toString(u"HH:mm:ss"); },
              [](const QDateTime &t) { return t.toString(u"yyyy-MM-dd HH:mm:ss"); },
              [](const QString &s) { return s; }},
        m_v);
}
