#include "store/column_value.h"

#include "store/clock.h"
#include "store/errors.h"
#include "store/jet/moment.h"

#include <cfloat>
#include <cmath>
#include <limits>

using namespace store;

namespace
{

[[noreturn]] void fail(int number, const char *reason, const jet::Column &column)
{
    throw StoreError(number,
                     QStringLiteral("\"%1\": %2")
                         .arg(QString::fromStdString(column.name), QString::fromLatin1(reason)));
}

double numberOf(const Value &value, const jet::Column &column)
{
    double x = 0;
    bool reads = value.is<bool>() || value.is<qint64>() || value.is<double>() || value.is<Moneda>();
    if (reads)
        x = value.toDouble();
    else if (const auto *text = value.is<QString>())
        x = text->trimmed().toDouble(&reads);
    if (!reads)
        fail(ErrorNumber::TypeMismatch, "a number is needed", column);
    if (!std::isfinite(x))
        fail(ErrorNumber::Overflow, "the number is too large", column);
    return x;
}

Value wholeNumber(const Value &value, const jet::Column &column, qint64 least, qint64 most)
{
    const auto *whole = value.is<qint64>();
    const double x = whole ? 0.0 : std::nearbyint(numberOf(value, column));
    if (whole ? *whole < least || *whole > most : x < double(least) || x > double(most))
        fail(ErrorNumber::Overflow, "the number is out of the column's range", column);
    return whole ? *whole : qint64(x);
}

Value amount(const Value &value, const jet::Column &column)
{
    if (value.is<Moneda>())
        return value;
    constexpr double most = double(std::numeric_limits<qint64>::max()) / 10000;
    const double x = numberOf(value, column);
    if (std::abs(x) >= most)
        fail(ErrorNumber::Overflow, "the amount is too large", column);
    return Moneda::round(x);
}

Value floatingNumber(const Value &value, const jet::Column &column)
{
    const double x = numberOf(value, column);
    if (column.type == ColumnType::Single && std::abs(x) > double(FLT_MAX))
        fail(ErrorNumber::Overflow, "the number is too large", column);
    return x;
}

std::optional<Value> momentOf(const Value &value, ColumnType type)
{
    Value v = value;
    if (const auto *text = value.is<QString>())
        v = momentFromText(*text).value_or(Value());
    if (const auto *both = v.is<QDateTime>(); both && type == ColumnType::Time)
        v = both->time();
    const bool fits = type == ColumnType::Time
                          ? v.is<QTime>() != nullptr
                          : v.is<QDate>() != nullptr || v.is<QDateTime>() != nullptr;
    return fits ? std::optional(v) : std::nullopt;
}

Value momentFor(const Value &value, const jet::Column &column)
{
    const auto moment = momentOf(value, column.type);
    if (!moment)
        fail(ErrorNumber::TypeMismatch,
             column.type == ColumnType::Time ? "a time is needed" : "a day is needed", column);
    // The files have a form for these years only.
    const int year = column.type == ColumnType::Date ? moment->toDate().year() : 100;
    if (year < 100 || year > 9999)
        fail(ErrorNumber::Overflow, "the day is out of range", column);
    return *moment;
}

} // namespace

Value store::toColumn(const Value &value, const jet::Column &column)
{
    if (value.isNull())
        return column.type == ColumnType::YesNo ? Value(false) : value;
    switch (column.type) {
    case ColumnType::Byte:
        return wholeNumber(value, column, 0, 255);
    case ColumnType::Smallint:
        return wholeNumber(value, column, std::numeric_limits<qint16>::min(),
                           std::numeric_limits<qint16>::max());
    case ColumnType::Counter:
    case ColumnType::Long:
        return wholeNumber(value, column, std::numeric_limits<qint32>::min(),
                           std::numeric_limits<qint32>::max());
    case ColumnType::Single:
    case ColumnType::Double:
        return floatingNumber(value, column);
    case ColumnType::Currency:
        return amount(value, column);
    case ColumnType::YesNo:
        return numberOf(value, column) != 0.0;
    case ColumnType::Date:
    case ColumnType::Time:
        return momentFor(value, column);
    case ColumnType::Text: {
        QString text = value.toText();
        if (column.width > 0 && text.size() > column.width)
            fail(ErrorNumber::TextTooLong, "the text is too long", column);
        return text;
    }
    case ColumnType::Memo:
        return value.toText();
    case ColumnType::None:
        break;
    }
    return value;
}

Value store::toMoment(const Value &value, ColumnType type)
{
    if (value.isNull())
        return value;
    if (auto moment = momentOf(value, type))
        return *std::move(moment);
    throw StoreError(ErrorNumber::TypeMismatch,
                     type == ColumnType::Time
                         ? QStringLiteral("A time is compared with something else")
                         : QStringLiteral("A day is compared with something else"));
}

std::optional<Value> store::momentFromText(const QString &text)
{
    const QString t = text.trimmed();
    if (const auto moment = jet::momentFromStorage(t.toStdString())) {
        const QTime time = QTime::fromMSecsSinceStartOfDay(moment->second.value_or(0) * 1000);
        if (!moment->day)
            return time;
        const QDate day = QDate::fromJulianDay(*moment->day);
        return moment->second ? Value(QDateTime(day, time, Qt::UTC)) : Value(day);
    }
    if (const QTime time = QTime::fromString(t, u"H:mm"); time.isValid())
        return time;
    const QDate day = QDate::fromString(t, isMonthFirst() ? QStringLiteral("M/d/yyyy")
                                                          : QStringLiteral("d/M/yyyy"));
    return day.isValid() ? std::optional<Value>(day) : std::nullopt;
}
