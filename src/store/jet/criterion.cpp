#include "store/jet/criterion.h"

#include "store/jet/lexer.h"
#include "store/jet/moment.h"
#include "store/jet/parser.h"
#include "store/jet/text.h"

#include <QtNumeric>
#include <algorithm>
#include <cmath>
#include <limits>

namespace jet
{
namespace
{
// What a condition comes to: as in SQL, Null is neither met nor not met.
using Truth = std::optional<bool>;

bool IsDay(const Valor &v) { return v.Es<QDate>() || v.Es<QDateTime>(); }
bool IsNumber(const Valor &v)
{
    return v.Es<bool>() || v.Es<qint64>() || v.Es<double>() || v.Es<Moneda>();
}

Valor FromStorage(const std::string &text)
{
    const auto m = MomentFromStorage(text);
    if (!m)
        return {};
    const QTime time = QTime::fromMSecsSinceStartOfDay(m->second.value_or(0) * 1000);
    if (!m->day)
        return time;
    const QDate day = QDate::fromJulianDay(*m->day);
    return m->second ? Valor(QDateTime(day, time, Qt::UTC)) : Valor(day);
}

int Sign(auto a, auto b) { return a < b ? -1 : b < a ? 1 : 0; }

// A number, or a text that reads as one.
bool CountsAsNumber(const Valor &v)
{
    bool reads = IsNumber(v);
    if (const QString *s = v.Es<QString>())
        s->trimmed().toDouble(&reads);
    return reads;
}

// Both are not Null.
int Compare(const Valor &a, const Valor &b)
{
    if (IsNumber(a) || IsNumber(b)) {
        if (!CountsAsNumber(a) || !CountsAsNumber(b))
            return CountsAsNumber(a) ? -1 : 1; // numbers come before all else, as in the engine
        if ((a.Es<Moneda>() || b.Es<Moneda>()) && !a.Es<double>() && !b.Es<double>())
            return Sign(a.toMoneda(), b.toMoneda());
        if (a.Es<qint64>() && b.Es<qint64>())
            return Sign(*a.Es<qint64>(), *b.Es<qint64>());
        return Sign(a.toDouble(), b.toDouble());
    }
    if (a.Es<QDate>() && b.Es<QDate>())
        return Sign(*a.Es<QDate>(), *b.Es<QDate>());
    if (a.Es<QString>() && b.Es<QString>())
        return Comparar(a.toText().toStdString(), b.toText().toStdString());
    return Sign(a.toText(), b.toText()); // the form of days and times sorts as they do
}

class ParsedCriterion : public Criterio
{
public:
    ParsedCriterion(std::string_view text, std::span<const ColumnaDeSalida> columns)
        : m_condition(ParseCondition(text))
    {
        Bind(*m_condition.value, text, columns);
    }

    std::optional<Igualdad> ComoIgualdad(std::span<const Valor> given) const override
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
        return Igualdad{int(column.integer), Evaluate(value, run)};
    }

    bool Cumple(const std::function<Valor(int)> &cell, std::span<const Valor> given,
                QDate today) const override
    {
        const Run run{&cell, given, today};
        return Holds(*m_condition.value, run) == true;
    }

private:
    struct Run {
        const std::function<Valor(int)> *cell;
        std::span<const Valor> given;
        QDate today;
    };

    // Puts the position of each column into its node and refuses what is not computed here.
    static void Bind(Expression &e, std::string_view text, std::span<const ColumnaDeSalida> columns)
    {
        if (e.select)
            Refuse(text, e.place, QStringLiteral("A query within a criterion"));
        if (e.kind == Expression::Call && (e.text != "DATE" || !e.parts.empty() || e.star))
            Refuse(text, e.place, QStringLiteral("This function cannot stand in a criterion"));
        if (e.kind == Expression::Column)
            e.integer = Position(e, text, columns);
        for (const ExpressionPtr &part : e.parts)
            Bind(*part, text, columns);
    }

    static qint64 Position(const Expression &e, std::string_view text,
                           std::span<const ColumnaDeSalida> columns)
    {
        const std::string name = Plegar(e.text);
        const std::string table = Plegar(e.table);
        const auto found = std::ranges::find_if(columns, [&](const ColumnaDeSalida &c) {
            return Plegar(c.nombre) == name && (table.empty() || Plegar(c.tabla) == table);
        });
        if (found == columns.end())
            Refuse(text, e.place,
                   QStringLiteral("No column \"%1\"").arg(QString::fromStdString(e.text)),
                   ErrorNum::Parametros);
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

    static Truth Holds(const Expression &e, const Run &run)
    {
        const auto part = [&](size_t i) { return Evaluate(*e.parts[i], run); };
        const auto negatedIf = [&](Truth t) { return e.negated ? Not(t) : t; };
        switch (e.kind) {
        case Expression::Not:
            return Not(Holds(*e.parts[0], run));
        case Expression::IsNull:
            return part(0).EsNulo() != e.negated;
        case Expression::Between: {
            const Valor v = part(0), a = part(1), b = part(2);
            if (v.EsNulo() || a.EsNulo() || b.EsNulo())
                return std::nullopt;
            const bool swapped = Compare(a, b) > 0;
            return negatedIf(Compare(swapped ? b : a, v) <= 0 && Compare(v, swapped ? a : b) <= 0);
        }
        case Expression::In: {
            const Valor v = part(0);
            Truth found = false;
            for (size_t i = 1; i < e.parts.size(); ++i)
                found = Or(found, Compared(Op::Equal, v, part(i)));
            return negatedIf(found);
        }
        case Expression::Binary:
            break;
        default:
            return AsTruth(Evaluate(e, run));
        }
        switch (e.op) {
        case Op::And: {
            const Truth left = Holds(*e.parts[0], run);
            return left == false ? left : And(left, Holds(*e.parts[1], run));
        }
        case Op::Or: {
            const Truth left = Holds(*e.parts[0], run);
            return left == true ? left : Or(left, Holds(*e.parts[1], run));
        }
        case Op::Like: {
            const Valor text = part(0), pattern = part(1);
            if (text.EsNulo() || pattern.EsNulo())
                return std::nullopt;
            return negatedIf(Parecido(text.toText().toStdString(), pattern.toText().toStdString()));
        }
        case Op::Equal:
        case Op::NotEqual:
        case Op::Less:
        case Op::LessEqual:
        case Op::Greater:
        case Op::GreaterEqual:
            return Compared(e.op, part(0), part(1));
        default:
            return AsTruth(Evaluate(e, run));
        }
    }

    static Truth AsTruth(const Valor &v) { return v.EsNulo() ? Truth() : v.toBool(); }

    static Truth Compared(Op op, const Valor &a, const Valor &b)
    {
        if (a.EsNulo() || b.EsNulo())
            return std::nullopt;
        const int order = Compare(a, b);
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

    static Valor Evaluate(const Expression &e, const Run &run)
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
            return FromStorage(e.text);
        case Expression::Given:
            return size_t(e.integer) < run.given.size() ? run.given[size_t(e.integer)] : Valor();
        case Expression::Column:
            return (*run.cell)(int(e.integer));
        case Expression::Call:
            return run.today;
        case Expression::Negate:
            return Computed(Op::Subtract, Valor(0), Evaluate(*e.parts[0], run));
        case Expression::Binary:
            if (e.op > Op::Like)
                return Computed(e.op, Evaluate(*e.parts[0], run), Evaluate(*e.parts[1], run));
            break;
        default:
            break;
        }
        const Truth t = Holds(e, run);
        return t ? Valor(*t) : Valor();
    }

    static Valor Computed(Op op, const Valor &a, const Valor &b)
    {
        if (op == Op::Concatenate)
            return a.toText() + b.toText();
        if (a.EsNulo() || b.EsNulo())
            return {};
        if (IsDay(a) || IsDay(b))
            return ComputedDay(op, a, b);
        if (op == Op::Add && a.Es<QString>() && b.Es<QString>())
            return a.toText() + b.toText();
        if (a.Es<Moneda>() || b.Es<Moneda>()) {
            const qint64 x = a.toMoneda().Diezmilesimos();
            const qint64 y = b.toMoneda().Diezmilesimos();
            qint64 sum = 0;
            if ((op == Op::Add && !qAddOverflow(x, y, &sum))
                || (op == Op::Subtract && !qSubOverflow(x, y, &sum)))
                return Moneda::DeDiezmilesimos(sum);
            if (op == Op::Multiply)
                return Moneda::Redondear(a.toDouble() * b.toDouble());
        }
        return ComputedNumber(op, a, b);
    }

    static Valor ComputedDay(Op op, const Valor &a, const Valor &b)
    {
        if (op == Op::Subtract && IsDay(a) && IsDay(b))
            return b.toDate().daysTo(a.toDate());
        const Valor &day = IsDay(a) ? a : b;
        const qint64 days = IsDay(a) ? b.toLong() : a.toLong();
        if (op == Op::Add)
            return Moved(day, days);
        return op == Op::Subtract && IsDay(a) ? Moved(day, -days) : Valor();
    }

    static Valor Moved(const Valor &day, qint64 days)
    {
        constexpr qint64 Most = 10'000'000; // beyond every calendar day that the files take
        if (std::abs(days) > Most)
            return {};
        if (const QDateTime *t = day.Es<QDateTime>())
            return t->addDays(days);
        return day.toDate().addDays(days);
    }

    static Valor ComputedNumber(Op op, const Valor &a, const Valor &b)
    {
        const qint64 *wholeA = a.Es<qint64>();
        const qint64 *wholeB = b.Es<qint64>();
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
            return y == 0 ? Valor() : Valor(x / y);
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
};
} // namespace

std::shared_ptr<const Criterio> Criterio::Compilar(std::string_view texto,
                                                   std::span<const ColumnaDeSalida> columnas)
{
    return std::make_shared<ParsedCriterion>(texto, columnas);
}

} // namespace jet
