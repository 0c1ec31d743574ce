#include "store/jet/criterion.h"

#include "store/column_value.h"
#include "store/jet/lexer.h"
#include "store/jet/parser.h"
#include "store/jet/text.h"
#include "store/value.h"

#include <QtNumeric>
#include <algorithm>
#include <cmath>
#include <limits>

using namespace store;

namespace jet
{
namespace
{
// The value of a condition; nullopt is Null, neither true nor false, as in SQL.
using Truth = std::optional<bool>;

bool isDay(const Value &v) { return v.is<QDate>() || v.is<QDateTime>(); }
bool holdsMoment(const Value &v) { return isDay(v) || v.is<QTime>(); }
bool isNumber(const Value &v)
{
    return v.is<bool>() || v.is<qint64>() || v.is<double>() || v.is<Moneda>();
}

int sign(auto a, auto b) { return a < b ? -1 : b < a ? 1 : 0; }

// Whether it is a number, or text that reads as one.
bool countsAsNumber(const Value &v)
{
    bool reads = isNumber(v);
    if (const QString *s = v.is<QString>())
        s->trimmed().toDouble(&reads);
    return reads;
}

// Neither may be Null.
int compare(const Value &a, const Value &b)
{
    if (isNumber(a) || isNumber(b)) {
        if (!countsAsNumber(a) || !countsAsNumber(b))
            return countsAsNumber(a) ? -1 : 1; // numbers sort before all else, as in the engine
        if ((a.is<Moneda>() || b.is<Moneda>()) && !a.is<double>() && !b.is<double>())
            return sign(a.toMoneda(), b.toMoneda());
        if (a.is<qint64>() && b.is<qint64>())
            return sign(*a.is<qint64>(), *b.is<qint64>());
        return sign(a.toDouble(), b.toDouble());
    }
    if (a.is<QDate>() && b.is<QDate>())
        return sign(*a.is<QDate>(), *b.is<QDate>());
    if (a.is<QString>() && b.is<QString>())
        return compareText(a.toText().toStdString(), b.toText().toStdString());
    return sign(a.toText(), b.toText()); // dates and times as text sort chronologically
}

class ParsedCriterion : public Criterion
{
public:
    ParsedCriterion(std::string_view text, std::span<const OutputColumn> columns)
        : m_condition(parseCondition(text))
    {
        bind(*m_condition.value, text, columns);
        BindMoments(*m_condition.value, text, columns);
    }

    std::span<const Value> prepare(std::span<const Value> given,
                                   std::vector<Value> &room) const override
    {
        if (m_moments.empty())
            return given;
        room.assign(given.begin(), given.end());
        for (const auto &[index, type] : m_moments)
            if (index < room.size())
                room[index] = toMoment(room[index], type);
        return room;
    }

    std::optional<Equality> asEquality(std::span<const Value> given) const override
    {
        const Expression &e = *m_condition.value;
        if (e.kind != Expression::Binary || e.op != Op::Equal)
            return std::nullopt;
        const Expression &column = *e.parts[0];
        const Expression &value = *e.parts[1];
        const Expression &literal = value.kind == Expression::Negate ? *value.parts[0] : value;
        const bool known =
            literal.kind == Expression::Integer
            || (&literal == &value
                && (value.kind == Expression::Text || value.kind == Expression::Given));
        if (column.kind != Expression::Column || !known)
            return std::nullopt;
        const Run run{{}, given, {}};
        return Equality{int(column.integer), evaluate(value, run)};
    }

    bool meets(const std::function<Value(int)> &cell, std::span<const Value> given,
               QDate today) const override
    {
        const Run run{&cell, given, today};
        return holds(*m_condition.value, run) == true;
    }

private:
    struct Run {
        const std::function<Value(int)> *cell;
        std::span<const Value> given;
        QDate today;
    };

    // Stores the position of each column in its node, and refuses what cannot be evaluated here.
    static void bind(Expression &e, std::string_view text, std::span<const OutputColumn> columns)
    {
        if (e.select)
            refuse(text, e.place, QStringLiteral("A query within a criterion"));
        if (e.kind == Expression::Call && (e.text != "DATE" || !e.parts.empty() || e.star))
            refuse(text, e.place, QStringLiteral("This function cannot stand in a criterion"));
        if (e.kind == Expression::Column)
            e.integer = position(e, text, columns);
        for (const ExpressionPtr &part : e.parts)
            bind(*part, text, columns);
    }

    // Makes dates or times of what is compared with a column of those.
    void BindMoments(Expression &e, std::string_view text, std::span<const OutputColumn> columns)
    {
        for (const ExpressionPtr &part : e.parts)
            BindMoments(*part, text, columns);
        const bool compares =
            e.kind == Expression::Between || e.kind == Expression::In
            || (e.kind == Expression::Binary && e.op >= Op::Equal && e.op <= Op::GreaterEqual);
        if (!compares)
            return;
        ColumnType type = ColumnType::None;
        for (const ExpressionPtr &part : e.parts)
            if (part->kind == Expression::Column)
                if (const ColumnType t = columns[size_t(part->integer)].type; isMoment(t))
                    type = t;
        if (type == ColumnType::None)
            return;
        for (const ExpressionPtr &part : e.parts) {
            if (part->kind == Expression::Given)
                m_moments.emplace_back(size_t(part->integer), type);
            const bool literal = part->kind == Expression::Text || part->kind == Expression::Moment;
            if (!literal && part->kind != Expression::Integer && part->kind != Expression::Decimal)
                continue;
            try {
                const Value known = literal ? Value(QString::fromStdString(part->text)) : Value(0);
                part->text = toMoment(known, type).toText().toStdString();
                part->kind = Expression::Moment;
            } catch (const StoreError &error) {
                refuse(text, part->place, error.description, error.number);
            }
        }
    }

    static qint64 position(const Expression &e, std::string_view text,
                           std::span<const OutputColumn> columns)
    {
        const std::string name = fold(e.text);
        const std::string table = fold(e.table);
        const auto found = std::ranges::find_if(columns, [&](const OutputColumn &c) {
            return fold(c.name) == name && (table.empty() || fold(c.table) == table);
        });
        if (found == columns.end())
            refuse(text, e.place,
                   QStringLiteral("No column \"%1\"").arg(QString::fromStdString(e.text)),
                   ErrorNumber::Parameters);
        return found - columns.begin();
    }

    static Truth Not(Truth t) { return t ? Truth(!*t) : t; }

    static Truth And(Truth a, Truth b)
    {
        if (a == false || b == false)
            return false;
        return a && b ? Truth(true) : std::nullopt;
    }

    static Truth Or(Truth a, Truth b) { return Not(And(Not(a), Not(b))); }

    static Truth holds(const Expression &e, const Run &run)
    {
        const auto part = [&](size_t i) { return evaluate(*e.parts[i], run); };
        const auto negatedIf = [&](Truth t) { return e.negated ? Not(t) : t; };
        switch (e.kind) {
        case Expression::Not:
            return Not(holds(*e.parts[0], run));
        case Expression::IsNull:
            return part(0).isNull() != e.negated;
        case Expression::Between: {
            const Value v = part(0), a = part(1), b = part(2);
            if (v.isNull() || a.isNull() || b.isNull())
                return std::nullopt;
            // On purpose: BETWEEN takes its bounds in either order.
            const bool swapped = compare(a, b) > 0;
            return negatedIf(compare(swapped ? b : a, v) <= 0 && compare(v, swapped ? a : b) <= 0);
        }
        case Expression::In: {
            const Value v = part(0);
            Truth found = false;
            for (size_t i = 1; i < e.parts.size(); ++i)
                found = Or(found, compared(Op::Equal, v, part(i)));
            return negatedIf(found);
        }
        case Expression::Binary:
            break;
        default:
            return asTruth(evaluate(e, run));
        }
        switch (e.op) {
        case Op::And: {
            const Truth left = holds(*e.parts[0], run);
            return left == false ? left : And(left, holds(*e.parts[1], run));
        }
        case Op::Or: {
            const Truth left = holds(*e.parts[0], run);
            return left == true ? left : Or(left, holds(*e.parts[1], run));
        }
        case Op::Like: {
            const Value text = part(0), pattern = part(1);
            if (text.isNull() || pattern.isNull())
                return std::nullopt;
            return negatedIf(similar(text.toText().toStdString(), pattern.toText().toStdString()));
        }
        case Op::Equal:
        case Op::NotEqual:
        case Op::Less:
        case Op::LessEqual:
        case Op::Greater:
        case Op::GreaterEqual:
            return compared(e.op, part(0), part(1));
        default:
            return asTruth(evaluate(e, run));
        }
    }

    static Truth asTruth(const Value &v) { return v.isNull() ? Truth() : v.toBool(); }

    static Truth compared(Op op, const Value &a, const Value &b)
    {
        if (a.isNull() || b.isNull())
            return std::nullopt;
        // Text that another program wrote into a column of dates or times matches nothing.
        if (holdsMoment(a) != holdsMoment(b) && (a.is<QString>() || b.is<QString>()))
            return std::nullopt;
        const int order = compare(a, b);
        switch (op) {
        case Op::Equal:
            return order == 0;
        case Op::NotEqual:
            return order != 0;
        case Op::Less:
            return order < 0;
        case Op::LessEqual:
            return order <= 0;
        case Op::Greater:
            return order > 0;
        default:
            return order >= 0;
        }
    }

    static Value evaluate(const Expression &e, const Run &run)
    {
        switch (e.kind) {
        case Expression::Null:
            return {};
        case Expression::Integer:
            return e.integer;
        case Expression::Logical:
            return e.integer != 0;
        case Expression::Decimal:
            return e.number;
        case Expression::Text:
            return QString::fromStdString(e.text);
        case Expression::Moment:
            return momentFromText(QString::fromStdString(e.text)).value_or(Value());
        case Expression::Given:
            return size_t(e.integer) < run.given.size() ? run.given[size_t(e.integer)] : Value();
        case Expression::Column:
            return (*run.cell)(int(e.integer));
        case Expression::Call:
            return run.today;
        case Expression::Negate:
            return computed(Op::Subtract, Value(0), evaluate(*e.parts[0], run));
        case Expression::Binary:
            if (e.op > Op::Like)
                return computed(e.op, evaluate(*e.parts[0], run), evaluate(*e.parts[1], run));
            break;
        default:
            break;
        }
        const Truth t = holds(e, run);
        return t ? Value(*t) : Value();
    }

    static Value computed(Op op, const Value &a, const Value &b)
    {
        if (op == Op::Concatenate)
            return a.toText() + b.toText();
        if (a.isNull() || b.isNull())
            return {};
        if (isDay(a) || isDay(b))
            return computedDay(op, a, b);
        if (op == Op::Add && a.is<QString>() && b.is<QString>())
            return a.toText() + b.toText();
        if (a.is<Moneda>() || b.is<Moneda>()) {
            const qint64 x = a.toMoneda().tenThousandths();
            const qint64 y = b.toMoneda().tenThousandths();
            qint64 sum = 0;
            if ((op == Op::Add && !qAddOverflow(x, y, &sum))
                || (op == Op::Subtract && !qSubOverflow(x, y, &sum)))
                return Moneda::fromTenThousandths(sum);
            if (op == Op::Multiply)
                return Moneda::round(a.toDouble() * b.toDouble());
        }
        return computedNumber(op, a, b);
    }

    static Value computedDay(Op op, const Value &a, const Value &b)
    {
        if (op == Op::Subtract && isDay(a) && isDay(b))
            return b.toDate().daysTo(a.toDate());
        const Value &day = isDay(a) ? a : b;
        const qint64 days = isDay(a) ? b.toLong() : a.toLong();
        if (op == Op::Add)
            return moved(day, days);
        return op == Op::Subtract && isDay(a) ? moved(day, -days) : Value();
    }

    static Value moved(const Value &day, qint64 days)
    {
        constexpr qint64 Most = 10'000'000; // more days than there are dates in the files
        if (std::abs(days) > Most)
            return {};
        if (const QDateTime *t = day.is<QDateTime>())
            return t->addDays(days);
        return day.toDate().addDays(days);
    }

    static Value computedNumber(Op op, const Value &a, const Value &b)
    {
        const qint64 *wholeA = a.is<qint64>();
        const qint64 *wholeB = b.is<qint64>();
        if (qint64 whole = 0;
            wholeA && wholeB
            && ((op == Op::Add && !qAddOverflow(*wholeA, *wholeB, &whole))
                || (op == Op::Subtract && !qSubOverflow(*wholeA, *wholeB, &whole))
                || (op == Op::Multiply && !qMulOverflow(*wholeA, *wholeB, &whole))))
            return whole;
        const double x = a.toDouble();
        const double y = b.toDouble();
        switch (op) {
        case Op::Add:
            return x + y;
        case Op::Subtract:
            return x - y;
        case Op::Multiply:
            return x * y;
        case Op::Divide:
            return y == 0 ? Value() : Value(x / y);
        case Op::IntegerDivide:
        case Op::Modulo: {
            const qint64 n = a.toLong();
            const qint64 m = b.toLong();
            if (m == 0 || (m == -1 && n == std::numeric_limits<qint64>::min()))
                return {};
            return op == Op::Modulo ? n % m : n / m;
        }
        default:
            return {};
        }
    }

    jet::Condition m_condition;
    std::vector<std::pair<size_t, ColumnType>> m_moments; // values compared with dates or times
};
} // namespace

std::shared_ptr<const Criterion> Criterion::compile(std::string_view text,
                                                    std::span<const OutputColumn> columns)
{
    return std::make_shared<ParsedCriterion>(text, columns);
}

} // namespace jet
