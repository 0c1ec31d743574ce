#include "store/value.h"

#include <QLocale>
#include <cmath>

using namespace store;

namespace
{
template <class... F>
struct By : F... {
    using F::operator()...;
};
template <class... F>
By(F...) -> By<F...>;

qint64 whole(double x)
{
    if (std::isnan(x))
        return 0;
    if (x >= 9.2e18)
        return std::numeric_limits<qint64>::max();
    if (x <= -9.2e18)
        return std::numeric_limits<qint64>::min();
    return qint64(std::nearbyint(x));
}

QString numberToText(double x)
{
    return QLocale::c().toString(x, 'g', QLocale::FloatingPointShortest);
}
} // namespace

bool store::isTextual(ColumnType t) { return t == ColumnType::Text || t == ColumnType::Memo; }
bool store::isMoment(ColumnType t) { return t == ColumnType::Date || t == ColumnType::Time; }
bool store::isWhole(ColumnType t)
{
    return t == ColumnType::Counter || t == ColumnType::Byte || t == ColumnType::Smallint
           || t == ColumnType::Long || t == ColumnType::YesNo;
}
bool store::isFloating(ColumnType t)
{
    return t == ColumnType::Single || t == ColumnType::Double || t == ColumnType::Currency;
}

qint64 Value::toLong() const
{
    return std::visit(By{[](std::monostate) { return qint64(0); },
                         [](bool b) { return qint64(b ? -1 : 0); }, [](qint64 n) { return n; },
                         [](double x) { return whole(x); },
                         [](Moneda m) { return whole(m.toDouble()); },
                         [](const QString &s) {
                             bool well = false;
                             const qint64 n = s.trimmed().toLongLong(&well);
                             return well ? n : whole(s.trimmed().toDouble());
                         },
                         [](const auto &) { return qint64(0); }},
                      m_v);
}

double Value::toDouble() const
{
    return std::visit(By{[](bool b) { return b ? -1.0 : 0.0; }, [](qint64 n) { return double(n); },
                         [](double x) { return x; }, [](Moneda m) { return m.toDouble(); },
                         [](const QString &s) { return s.trimmed().toDouble(); },
                         [](const auto &) { return 0.0; }},
                      m_v);
}

Moneda Value::toMoneda() const
{
    if (const auto *m = is<Moneda>())
        return *m;
    return Moneda::round(toDouble());
}

bool Value::toBool() const { return toDouble() != 0.0; }

QDate Value::toDate() const
{
    if (const auto *d = is<QDate>())
        return *d;
    if (const auto *t = is<QDateTime>())
        return t->date();
    if (const auto *s = is<QString>())
        return QDate::fromString(s->left(10), Qt::ISODate);
    return {};
}

QTime Value::toTime() const
{
    if (const auto *t = is<QTime>())
        return *t;
    if (const auto *t = is<QDateTime>())
        return t->time();
    if (const auto *s = is<QString>())
        return QTime::fromString(s->right(8), Qt::ISODate);
    return {};
}

QString Value::toText() const
{
    return std::visit(
        By{[](std::monostate) { return QString(); },
           [](bool b) { return b ? QStringLiteral("-1") : QStringLiteral("0"); },
           [](qint64 n) { return QString::number(n); }, [](double x) { return numberToText(x); },
           [](Moneda m) { return m.toText(); }, [](QDate d) { return d.toString(Qt::ISODate); },
           [](QTime t) { return t.toString(u"HH:mm:ss"); },
           [](const QDateTime &t) { return t.toString(u"yyyy-MM-dd HH:mm:ss"); },
           [](const QString &s) { return s; }},
        m_v);
}
