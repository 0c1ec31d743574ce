#include "store/jet/fragment.h"
#include "store/jet/lexer.h"
#include "store/jet/moment.h"
#include "store/jet/parser.h"
#include "store/jet/text.h"

#include <algorithm>
#include <array>
#include <map>
#include <optional>

namespace jet
{
namespace
{
// The engine's own limits, with a little room: what goes beyond is refused here and not by it.
constexpr int MaxEngineStack = 90;   // of 100 entries
constexpr int MaxEngineHeight = 900; // of 1000
constexpr size_t MaxColumns = 1500;  // of 2000

QString FromUtf8(std::string_view s) { return QString::fromUtf8(s.data(), qsizetype(s.size())); }

// A binary operator of the dialect that the engine has too.
struct Operator {
    Op op;
    const char *pattern;
    Strength strength;
};
constexpr std::array Operators{
    Operator{Op::Equal, "$1 = $2", Strength::Equal},
    Operator{Op::NotEqual, "$1 <> $2", Strength::Equal},
    Operator{Op::Less, "$1 < $2", Strength::Compare},
    Operator{Op::LessEqual, "$1 <= $2", Strength::Compare},
    Operator{Op::Greater, "$1 > $2", Strength::Compare},
    Operator{Op::GreaterEqual, "$1 >= $2", Strength::Compare},
    Operator{Op::Add, "$1 + $2", Strength::Add},
    Operator{Op::Subtract, "$1 - $2", Strength::Add},
    Operator{Op::Multiply, "$1 * $2", Strength::Multiply},
    // In whole numbers the engine would drop the fraction.
    Operator{Op::Divide, "$1 * 1.0 / $2", Strength::Multiply},
    Operator{Op::IntegerDivide, "$1 / $2", Strength::Multiply},
    Operator{Op::Modulo, "$1 % $2", Strength::Multiply},
};
const Operator &Find(Op op) { return *std::ranges::find(Operators, op, &Operator::op); }

// Functions of the dialect and what they are in the engine. The arguments' letters: t a text,
// n a number, m a moment. The type Ninguno stands for that of the first argument.
struct Function {
    const char *name;
    const char *arguments;
    const char *pattern;
    Tipo tipo;
};
constexpr std::array Functions{
    Function{"ABS", "n", "abs($1)", Tipo::Ninguno},
    Function{"CSTR", "t", "$1", Tipo::Text},
    Function{"DAY", "m", "CAST(substr($1, 9, 2) AS INTEGER)", Tipo::Long},
    Function{"INT", "n", "jet_int($1)", Tipo::Ninguno},
    Function{"LCASE", "t", "jet_lcase($1)", Tipo::Text},
    Function{"LEFT", "tn", "jet_mid($1, 1, $2)", Tipo::Text},
    Function{"LEN", "t", "length($1)", Tipo::Long},
    Function{"MID", "tn", "jet_mid($1, $2)", Tipo::Text},
    Function{"MID", "tnn", "jet_mid($1, $2, $3)", Tipo::Text},
    Function{"MONTH", "m", "CAST(substr($1, 6, 2) AS INTEGER)", Tipo::Long},
    Function{"RIGHT", "tn", "jet_right($1, $2)", Tipo::Text},
    Function{"ROUND", "n", "jet_round($1, 0)", Tipo::Ninguno},
    Function{"ROUND", "nn", "jet_round($1, $2)", Tipo::Ninguno},
    Function{"TRIM", "t", "trim($1)", Tipo::Text},
    Function{"UCASE", "t", "jet_ucase($1)", Tipo::Text},
    Function{"VAL", "t", "jet_val($1)", Tipo::Double},
    Function{"YEAR", "m", "CAST(substr($1, 1, 4) AS INTEGER)", Tipo::Long},
};

// The tables that a query's names can mean.
struct Scope {
    struct Source {
        const Tabla *table;
        std::string alias;
    };
    using Key = std::pair<size_t, const Columna *>; // source and column

    std::vector<Source> sources;
    size_t first = 0; // visible sources: all, but for the condition of a join
    size_t last = 0;
    std::vector<std::pair<Key, Key>> joined; // columns that a join makes equal
    std::map<std::string, Fragment> aliases; // of the fields so far, by folded name
    enum { NoAggregates, Aggregates, InAggregate } aggregates = NoAggregates;
    enum { Free, Collecting, Checked } grouping = Free;
    std::vector<Key> groups;
    Scope *outer = nullptr;
    int nesting = 0;
};

class Emitter
{
public:
    Emitter(std::string_view sql, const Catalogo &catalog, std::string_view schema, bool withKeys)
        : m_sql(sql), m_catalog(catalog), m_schema(schema), m_withKeys(withKeys)
    {
    }

    Traduccion Translate()
    {
        Statement s = ParseStatement(m_sql);
        m_out.valoresDados = s.given;
        for (int i = 0; i < s.given; ++i)
            m_out.parametros.push_back({Parametro::Dado, i});
        Fragment f;
        if (auto *select = std::get_if<std::unique_ptr<Select>>(&s.body)) {
            m_out.clase = Traduccion::Consulta;
            f = EmitUnion(**select);
        } else if (auto *definition = std::get_if<Definicion>(&s.body)) {
            m_out.clase = Traduccion::Define;
            m_out.definicion = std::move(*definition);
        } else {
            m_out.clase = Traduccion::Cambio;
            if (auto *insert = std::get_if<Insert>(&s.body))
                f = EmitInsert(*insert);
            else if (auto *update = std::get_if<Update>(&s.body))
                f = EmitUpdate(*update);
            else
                f = EmitDelete(std::get<Delete>(s.body));
        }
        if (f.stack > MaxEngineStack || f.height > MaxEngineHeight)
            Fail(0, QStringLiteral("The statement is too deeply nested"));
        m_out.sql = std::move(f.sql);
        return std::move(m_out);
    }

private:
    [[noreturn]] void Fail(int place, const QString &reason, int number = ErrorNum::Sintaxis) const
    {
        Refuse(m_sql, place, reason, number);
    }

    Fragment Special(Parametro::Origen origin, Tipo tipo)
    {
        auto &parameters = m_out.parametros;
        auto found = std::ranges::find(parameters, origin, &Parametro::origen);
        if (found == parameters.end())
            found = parameters.insert(parameters.end(), Parametro{origin, 0});
        return Plain("?" + std::to_string(found - parameters.begin() + 1), tipo);
    }

    // Names

    const Tabla &FindTable(std::string_view name, int place) const
    {
        const Tabla *table = m_catalog.Buscar(name);
        if (!table)
            Fail(place, QStringLiteral("No table \"%1\"").arg(FromUtf8(name)),
                 ErrorNum::TablaNoEncontrada);
        return *table;
    }

    std::string QualifiedTable(const Tabla &table) const
    {
        return Quoted(m_schema, '"') + "." + Quoted(table.nombre, '"');
    }

    const Columna *FindColumn(const Tabla &table, std::string_view folded) const
    {
        const auto found = std::ranges::find_if(
            table.columnas, [&](const Columna &c) { return Plegar(c.nombre) == folded; });
        return found == table.columnas.end() ? nullptr : &*found;
    }

    const Columna &FindColumn(const Tabla &table, const Name &name) const
    {
        if (const Columna *c = FindColumn(table, Plegar(name.text)))
            return *c;
        FailColumn(name.text, name.place);
    }

    [[noreturn]] void FailColumn(std::string_view name, int place) const
    {
        Fail(place, QStringLiteral("No column \"%1\"").arg(FromUtf8(name)), ErrorNum::Parametros);
    }

    Fragment ColumnOf(const Scope &scope, size_t source, const Columna &column) const
    {
        Fragment f =
            Plain(Quoted(scope.sources[source].alias, '"') + "." + Quoted(column.nombre, '"'),
                  column.tipo);
        f.stack = 3;
        f.reach = scope.nesting;
        f.width = column.ancho;
        f.rawMemo = column.tipo == Tipo::Memo;
        f.column = &column;
        f.source = source;
        return f;
    }

    // Whether joins make both columns equal, directly or by way of others.
    static bool AreJoined(const Scope &scope, const Scope::Key &a, const Scope::Key &b)
    {
        std::vector<Scope::Key> reached{a};
        for (size_t i = 0; i < reached.size(); ++i) {
            if (reached[i] == b)
                return true;
            for (const auto &[x, y] : scope.joined) {
                const auto reach = [&](const Scope::Key &from, const Scope::Key &to) {
                    if (reached[i] == from && std::ranges::find(reached, to) == reached.end())
                        reached.push_back(to);
                };
                reach(x, y);
                reach(y, x);
            }
        }
        return false;
    }

    std::optional<Scope::Key> FindInScope(const Scope &scope, const Expression &e) const
    {
        const std::string name = Plegar(e.text);
        if (!e.table.empty()) {
            const std::string qualifier = Plegar(e.table);
            for (size_t i = scope.first; i < scope.last; ++i) {
                if (Plegar(scope.sources[i].alias) != qualifier)
                    continue;
                if (const Columna *c = FindColumn(*scope.sources[i].table, name))
                    return Scope::Key{i, c};
                FailColumn(e.text, e.place);
            }
            return std::nullopt;
        }
        std::optional<Scope::Key> found;
        for (size_t i = scope.first; i < scope.last; ++i) {
            const Columna *c = FindColumn(*scope.sources[i].table, name);
            if (!c)
                continue;
            if (found && !AreJoined(scope, *found, {i, c}))
                Fail(e.place,
                     QStringLiteral("\"%1\" is a column of several tables").arg(FromUtf8(e.text)),
                     ErrorNum::Parametros);
            if (!found)
                found = Scope::Key{i, c};
        }
        return found;
    }

    // A name is a column of the nearest query that has one, or an earlier field of this query.
    Fragment EmitColumn(const Expression &e)
    {
        for (Scope *scope = m_scope; scope; scope = scope->outer) {
            if (const auto key = FindInScope(*scope, e)) {
                CheckGroup(*scope, *key, e);
                CheckHidden(*scope, key->first, e);
                return ColumnOf(*scope, key->first, *key->second);
            }
            if (scope == m_scope && e.table.empty()) {
                const auto alias = scope->aliases.find(Plegar(e.text));
                if (alias != scope->aliases.end()) {
                    if (alias->second.aggregate && scope->aggregates != Scope::Aggregates)
                        Fail(e.place, QStringLiteral("A total cannot stand here"));
                    return alias->second;
                }
            }
            if (scope->aggregates == Scope::InAggregate)
                break; // the engine would count the total to the outer query
        }
        FailColumn(e.table.empty() ? e.text : e.table + "." + e.text, e.place);
    }

    void CheckGroup(Scope &scope, const Scope::Key &key, const Expression &e) const
    {
        if (scope.grouping == Scope::Collecting)
            scope.groups.push_back(key);
        if (scope.grouping == Scope::Checked && scope.aggregates != Scope::InAggregate
            && std::ranges::find(scope.groups, key) == scope.groups.end())
            Fail(e.place, QStringLiteral("\"%1\" is neither grouped nor part of a total")
                              .arg(FromUtf8(e.text)));
    }

    // A table of an inner query under the same name would answer in the engine.
    void CheckHidden(const Scope &scope, size_t source, const Expression &e) const
    {
        const std::string alias = Plegar(scope.sources[source].alias);
        for (const Scope *s = m_scope; s != &scope; s = s->outer)
            for (const Scope::Source &inner : s->sources)
                if (Plegar(inner.alias) == alias)
                    FailColumn(e.text, e.place);
    }

    // Expressions

    // @p expected is what a '?' is taken for that stands alone in a sum with a number
    Fragment Emit(const Expression &e, Tipo expected = Tipo::Ninguno)
    {
        switch (e.kind) {
        case Expression::Null: {
            Fragment f = Plain("NULL");
            f.literal = Fragment::NullLiteral;
            return f;
        }
        case Expression::Integer:
        case Expression::Logical: {
            const bool logical = e.kind == Expression::Logical;
            Fragment f = Plain(std::to_string(e.integer), logical ? Tipo::YesNo : Tipo::Long);
            f.literal = Fragment::WholeLiteral;
            f.strength = e.integer < 0 ? Strength::Sign : Strength::Whole;
            f.stack = 2;
            return f;
        }
        case Expression::Decimal: {
            Fragment f = Plain(e.text, Tipo::Double);
            const size_t point = e.text.find('.');
            if (e.text.find_first_of("eE") == e.text.npos && e.text.size() - point <= 5)
                f.literal = Fragment::DecimalLiteral;
            return f;
        }
        case Expression::Text:
            return Plain(Quoted(e.text, '\''), Tipo::Text);
        case Expression::Moment:
            return Plain(Quoted(e.text, '\''), e.tipo);
        case Expression::Given:
            return Plain("?" + std::to_string(e.integer + 1), expected);
        case Expression::Column:
            return EmitColumn(e);
        case Expression::Negate:
            return EmitNegation(e);
        case Expression::Not: {
            const Fragment part = AsCondition(Emit(*e.parts[0]), Strength::Equal);
            return Truth(Build("NOT $1", Strength::Not, {&part}));
        }
        case Expression::Binary:
            return EmitBinary(e, expected);
        case Expression::Between:
            return EmitBetween(e);
        case Expression::In:
            return EmitIn(e);
        case Expression::IsNull: {
            const Fragment f = Emit(*e.parts[0]);
            const Fragment part = At(Strength::Add, f.rawMemo ? f : Value(f));
            return Truth(
                Build(e.negated ? "$1 IS NOT NULL" : "$1 IS NULL", Strength::Equal, {&part}));
        }
        case Expression::Call:
            return EmitCall(e);
        case Expression::Exists: {
            const Fragment f = EmitSelect(*e.select, Inner::Any);
            return Truth(Build("EXISTS ($1)", Strength::Whole, {&f}));
        }
        case Expression::Subselect: {
            const Fragment f = EmitSelect(*e.select, Inner::OneColumn);
            Fragment value = Build("($1)", Strength::Whole, {&f}, f.tipo);
            value.width = f.width;
            value.aggregate = false;
            return value;
        }
        }
        return {};
    }

    static Fragment Truth(Fragment f)
    {
        f.truth = true;
        f.tipo = Tipo::YesNo;
        return f;
    }

    Fragment Both(const Fragment &left, const Fragment &right) const
    {
        const Fragment l = AsCondition(left, Strength::And);
        const Fragment r = AsCondition(right, Strength::Not);
        return Truth(Build("$1 AND $2", Strength::And, {&l, &r}));
    }

    Fragment EmitNegation(const Expression &e)
    {
        const Fragment part = Value(Emit(*e.parts[0]));
        if (IsMoment(part.tipo))
            Fail(e.place, QStringLiteral("A date has no sign"));
        if (part.literal == Fragment::NullLiteral)
            return part;
        // "--" would begin a comment.
        const Fragment whole = At(Strength::Whole, part);
        Fragment f = Build("-$1", Strength::Sign, {&whole}, NumberType(part.tipo));
        f.literal = part.literal;
        return f;
    }

    static Tipo NumberType(Tipo t)
    {
        return t == Tipo::YesNo ? Tipo::Long : IsText(t) || IsMoment(t) ? Tipo::Double : t;
    }

    // Text is compared without regard to letter case, unless the other side is no text.
    static bool ComparesText(std::initializer_list<const Fragment *> sides)
    {
        const auto isText = [](const Fragment *f) { return IsText(f->tipo); };
        const auto isOther = [](const Fragment *f) {
            return !IsText(f->tipo) && f->tipo != Tipo::Ninguno;
        };
        return std::any_of(sides.begin(), sides.end(), isText)
               && std::none_of(sides.begin(), sides.end(), isOther);
    }

    // A '?' with a number added or taken off: a day, when it is compared with one.
    static bool IsOpenSum(const Expression &e)
    {
        const auto simple = [](const Expression &p) {
            return p.kind == Expression::Given || p.kind == Expression::Integer;
        };
        return e.kind == Expression::Binary && (e.op == Op::Add || e.op == Op::Subtract)
               && simple(*e.parts[0]) && simple(*e.parts[1]);
    }

    // Operands that are compared with each other.
    std::vector<Fragment> EmitCompared(const Expression &e)
    {
        std::vector<Fragment> sides(e.parts.size());
        Tipo expected = Tipo::Ninguno;
        for (const bool open : {false, true}) {
            for (size_t i = 0; i < sides.size(); ++i) {
                if (IsOpenSum(*e.parts[i]) != open)
                    continue;
                sides[i] = Value(Emit(*e.parts[i], expected));
                if (sides[i].tipo == Tipo::Date)
                    expected = Tipo::Date;
            }
        }
        return sides;
    }

    Fragment EmitBinary(const Expression &e, Tipo expected)
    {
        switch (e.op) {
        case Op::Or: {
            const Fragment l = AsCondition(Emit(*e.parts[0]), Strength::Or);
            const Fragment r = AsCondition(Emit(*e.parts[1]), Strength::And);
            return Truth(Build("$1 OR $2", Strength::Or, {&l, &r}));
        }
        case Op::And:
            return Both(Emit(*e.parts[0]), Emit(*e.parts[1]));
        case Op::Like: {
            const Fragment l = AsText(Emit(*e.parts[0]));
            const Fragment r = AsText(Emit(*e.parts[1]));
            return Truth(e.negated ? Build("NOT jet_like($1, $2)", Strength::Not, {&l, &r})
                                   : Build("jet_like($1, $2)", Strength::Whole, {&l, &r}));
        }
        case Op::Equal:
        case Op::NotEqual:
        case Op::Less:
        case Op::LessEqual:
        case Op::Greater:
        case Op::GreaterEqual: {
            const Operator &o = Find(e.op);
            const auto sides = EmitCompared(e);
            const bool text = ComparesText({&sides[0], &sides[1]});
            const Fragment l = At(Strength::Add, sides[0]);
            const Fragment r = At(Strength::Add, text ? Collated(sides[1]) : sides[1]);
            return Truth(Build(o.pattern, o.strength, {&l, &r}));
        }
        case Op::Concatenate:
            return Concatenated(Emit(*e.parts[0]), Emit(*e.parts[1]));
        default:
            return EmitArithmetic(e, expected);
        }
    }

    // Null counts as the empty text.
    Fragment Concatenated(const Fragment &left, const Fragment &right) const
    {
        const auto operand = [this](const Fragment &f) {
            const Fragment text = AsText(f);
            if (text.sql.starts_with('\''))
                return text;
            if (text.joined)
                return text;
            return Build("ifnull($1, '')", Strength::Whole, {&text}, Tipo::Text);
        };
        const Fragment l = At(Strength::Concatenate, operand(left));
        const Fragment r = At(Strength::Sign, operand(right));
        Fragment f = Build("$1 || $2", Strength::Concatenate, {&l, &r}, Tipo::Text);
        f.joined = true;
        return f;
    }

    Fragment EmitArithmetic(const Expression &e, Tipo expected)
    {
        const bool sum = e.op == Op::Add || e.op == Op::Subtract;
        const bool dayOnTheRight =
            expected == Tipo::Date && e.op == Op::Add && e.parts[0]->kind == Expression::Integer;
        const Fragment l = Value(Emit(*e.parts[0], dayOnTheRight ? Tipo::Ninguno : expected));
        const Fragment r = Value(Emit(*e.parts[1], dayOnTheRight ? expected : Tipo::Ninguno));
        if (IsMoment(l.tipo) || IsMoment(r.tipo))
            return DayArithmetic(e, l, r);
        if (e.op == Op::Add && (IsText(l.tipo) || IsText(r.tipo)) && TextOrUnknown(l)
            && TextOrUnknown(r)) {
            const Fragment left = At(Strength::Concatenate, l);
            const Fragment right = At(Strength::Sign, r);
            return Build("$1 || $2", Strength::Concatenate, {&left, &right}, Tipo::Text);
        }

        const Operator &o = Find(e.op);
        if (e.op == Op::IntegerDivide || e.op == Op::Modulo) {
            const Fragment left = At(Strength::Multiply, Rounded(l));
            const Fragment right = At(Strength::Concatenate, Rounded(r));
            return Build(o.pattern, o.strength, {&left, &right}, Tipo::Long);
        }
        const Fragment left = At(sum ? Strength::Add : Strength::Multiply, Unrounded(l, sum));
        const Fragment right = At(sum ? Strength::Multiply : Strength::Concatenate, r);
        if (e.op == Op::Divide)
            return Build(o.pattern, o.strength, {&left, &right}, Tipo::Double);
        if (!IsExact(l, r))
            return Build(o.pattern, o.strength, {&left, &right}, ArithmeticType(l, r));
        const Fragment exact = Build(o.pattern, o.strength, {&left, &right});
        Fragment rounded = Build("jet_moneda($1)", Strength::Whole, {&exact}, Tipo::Currency);
        rounded.roundedSum = sum;
        return rounded;
    }

    static bool TextOrUnknown(const Fragment &f)
    {
        return IsText(f.tipo) || (f.tipo == Tipo::Ninguno && f.literal == Fragment::NoLiteral);
    }

    // Amounts, and decimals written out with whole numbers or decimals written out.
    static bool IsExact(const Fragment &l, const Fragment &r)
    {
        return l.tipo == Tipo::Currency || r.tipo == Tipo::Currency
               || (l.literal == Fragment::DecimalLiteral && r.literal >= Fragment::WholeLiteral)
               || (r.literal == Fragment::DecimalLiteral && l.literal >= Fragment::WholeLiteral);
    }

    // A sum of several amounts is rounded once, at its end.
    Fragment Unrounded(const Fragment &f, bool sum) const
    {
        if (!sum || !f.roundedSum)
            return f;
        // Takes off what Build has put around it.
        constexpr std::string_view Rounding = "jet_moneda(";
        Fragment bare = f;
        bare.sql = f.sql.substr(Rounding.size(), f.sql.size() - Rounding.size() - 1);
        bare.strength = Strength::Add;
        bare.stack -= 3;
        bare.height -= 3;
        return bare;
    }

    static Tipo ArithmeticType(const Fragment &l, const Fragment &r)
    {
        const bool whole = IsWhole(l.tipo) && IsWhole(r.tipo);
        return whole                                                ? Tipo::Long
               : l.tipo == Tipo::Ninguno && r.tipo == Tipo::Ninguno ? Tipo::Ninguno
               : IsFloating(l.tipo) || IsFloating(r.tipo) || IsText(l.tipo) || IsText(r.tipo)
                   ? Tipo::Double
                   : Tipo::Ninguno;
    }

    // As a whole number.
    Fragment Rounded(const Fragment &f) const
    {
        if (IsWhole(f.tipo))
            return f;
        return Build("jet_entero($1)", Strength::Whole, {&f}, Tipo::Long);
    }

    Fragment DayArithmetic(const Expression &e, const Fragment &l, const Fragment &r) const
    {
        const auto isNumber = [](const Fragment &f) {
            return IsWhole(f.tipo) || IsFloating(f.tipo) || f.tipo == Tipo::Ninguno;
        };
        constexpr auto Pattern = "jet_dateadd('d', $1, $2)";
        if (e.op == Op::Add && l.tipo == Tipo::Date && isNumber(r))
            return Build(Pattern, Strength::Whole, {&r, &l}, Tipo::Date);
        if (e.op == Op::Add && r.tipo == Tipo::Date && isNumber(l))
            return Build(Pattern, Strength::Whole, {&l, &r}, Tipo::Date);
        if (e.op == Op::Subtract && l.tipo == Tipo::Date && r.tipo == Tipo::Date)
            return Build("jet_datediff('d', $2, $1)", Strength::Whole, {&l, &r}, Tipo::Long);
        if (e.op == Op::Subtract && l.tipo == Tipo::Date && isNumber(r)) {
            const Fragment number = At(Strength::Whole, r);
            const Fragment back = Build("-$1", Strength::Sign, {&number});
            return Build(Pattern, Strength::Whole, {&back, &l}, Tipo::Date);
        }
        Fail(e.place, QStringLiteral("Days do not reckon so"));
    }

    Fragment EmitBetween(const Expression &e)
    {
        const auto sides = EmitCompared(e);
        const bool text = ComparesText({&sides[0], &sides[1], &sides[2]});
        const Fragment value = At(Strength::Add, text ? Collated(sides[0]) : sides[0]);
        const Fragment a = text ? Collated(sides[1]) : sides[1];
        const Fragment &b = sides[2];
        return Truth(Build(e.negated ? "$1 NOT BETWEEN min($2, $3) AND max($2, $3)"
                                     : "$1 BETWEEN min($2, $3) AND max($2, $3)",
                           Strength::Equal, {&value, &a, &b}));
    }

    Fragment EmitIn(const Expression &e)
    {
        const auto sides = EmitCompared(e);
        Fragment list;
        bool text = IsText(sides[0].tipo);
        if (e.select) {
            const Fragment rows = EmitSelect(*e.select, Inner::OneColumn);
            text = ComparesText({&sides[0], &rows});
            list = Build("$1", Strength::Whole, {&rows});
        } else {
            for (size_t i = 1; i < sides.size(); ++i) {
                text = text || ComparesText({&sides[0], &sides[i]});
                Append(list, i > 1 ? ", " : "", sides[i], 1);
            }
        }
        const Fragment value = At(Strength::Add, text ? Collated(sides[0]) : sides[0]);
        return Truth(
            Build(e.negated ? "$1 NOT IN ($2)" : "$1 IN ($2)", Strength::Equal, {&value, &list}));
    }

    // Functions

    Fragment EmitCall(const Expression &e)
    {
        if (IsAggregate(e.text))
            return EmitAggregate(e);
        const size_t n = e.parts.size();
        if (e.text == "DATE" && n == 0)
            return Special(Parametro::Hoy, Tipo::Date);
        if (e.text == "TIME" && n == 0)
            return Special(Parametro::Hora, Tipo::Time);
        if (e.text == "NOW" && n == 0)
            return Special(Parametro::Ahora, Tipo::Date);
        if (e.text == "IIF" && n == 3)
            return EmitIif(e);
        if (e.text == "NZ" && (n == 1 || n == 2))
            return EmitNz(e);
        if ((e.text == "DATEADD" || e.text == "DATEDIFF") && n == 3)
            return EmitDateFunction(e);

        const auto found = std::ranges::find_if(Functions, [&](const Function &f) {
            return e.text == f.name && std::string_view(f.arguments).size() == n;
        });
        if (found == Functions.end())
            Fail(e.place,
                 QStringLiteral("No function \"%1\" with so many values").arg(FromUtf8(e.text)));
        std::array<Fragment, 3> a;
        for (size_t i = 0; i < n; ++i) {
            const Fragment f = Emit(*e.parts[i]);
            a[i] = found->arguments[i] == 't' ? AsText(f) : Value(f);
        }
        if (std::string_view(found->pattern) == "$1")
            return Build("$1", a[0].strength, {&a[0]}, found->tipo);
        const Tipo tipo = found->tipo == Tipo::Ninguno ? NumberType(a[0].tipo) : found->tipo;
        return Build(found->pattern, Strength::Whole, {&a[0], &a[1], &a[2]}, tipo);
    }

    Fragment EmitIif(const Expression &e)
    {
        const Fragment condition = AsCondition(Emit(*e.parts[0]), Strength::Or);
        const Fragment yes = Value(Emit(*e.parts[1]));
        const Fragment no = Value(Emit(*e.parts[2]));
        return Build("CASE WHEN $1 THEN $2 ELSE $3 END", Strength::Whole, {&condition, &yes, &no},
                     CommonType(yes, no));
    }

    Fragment EmitNz(const Expression &e)
    {
        const Fragment value = Value(Emit(*e.parts[0]));
        const bool number = IsWhole(value.tipo) || IsFloating(value.tipo);
        const Fragment instead = e.parts.size() == 2 ? Value(Emit(*e.parts[1]))
                                 : number            ? Plain("0", value.tipo)
                                                     : Plain("''", Tipo::Text);
        return Build("ifnull($1, $2)", Strength::Whole, {&value, &instead},
                     CommonType(value, instead));
    }

    // Of two values one of which is given.
    static Tipo CommonType(const Fragment &a, const Fragment &b)
    {
        if (a.tipo == b.tipo || b.literal == Fragment::NullLiteral)
            return a.tipo;
        if (a.literal == Fragment::NullLiteral)
            return b.tipo;
        if (IsText(a.tipo) && IsText(b.tipo))
            return Tipo::Memo;
        if (IsWhole(a.tipo) && IsWhole(b.tipo))
            return Tipo::Long;
        const bool literal =
            a.literal >= Fragment::WholeLiteral || b.literal >= Fragment::WholeLiteral;
        if (literal && (a.tipo == Tipo::Currency || b.tipo == Tipo::Currency))
            return Tipo::Currency;
        const auto isNumber = [](Tipo t) { return IsWhole(t) || IsFloating(t); };
        return isNumber(a.tipo) && isNumber(b.tipo) ? Tipo::Double : Tipo::Ninguno;
    }

    Fragment EmitDateFunction(const Expression &e)
    {
        const bool difference = e.text == "DATEDIFF";
        const Expression &unit = *e.parts[0];
        if (unit.kind != Expression::Text || !IntervalFromText(unit.text, difference))
            Fail(unit.place, QStringLiteral("An interval such as \"d\" expected"));
        const Fragment interval = Emit(unit);
        const Fragment a = Value(Emit(*e.parts[1]));
        const Fragment b = Value(Emit(*e.parts[2]));
        if (difference)
            return Build("jet_datediff($1, $2, $3)", Strength::Whole, {&interval, &a, &b},
                         Tipo::Long);
        return Build("jet_dateadd($1, $2, $3)", Strength::Whole, {&interval, &a, &b},
                     b.tipo == Tipo::Time ? Tipo::Time : Tipo::Date);
    }

    Fragment EmitAggregate(const Expression &e)
    {
        if (!m_scope || m_scope->aggregates != Scope::Aggregates)
            Fail(e.place, QStringLiteral("A total cannot stand here"));
        if (!e.star && e.parts.size() != 1)
            Fail(e.place, QStringLiteral("A total takes one value"));
        if (e.star) {
            Fragment f = Plain("count(*)", Tipo::Long);
            f.aggregate = true;
            f.stack = 4;
            return f;
        }
        m_scope->aggregates = Scope::InAggregate;
        const Fragment raw = Emit(*e.parts[0]);
        m_scope->aggregates = Scope::Aggregates;
        Fragment f = Total(e.text, raw);
        f.aggregate = true;
        return f;
    }

    Fragment Total(const std::string &function, const Fragment &raw) const
    {
        if (function == "COUNT")
            return Build("count($1)", Strength::Whole, {&raw}, Tipo::Long);
        const Fragment value = Value(raw);
        const bool currency = value.tipo == Tipo::Currency;
        if (function == "MIN" || function == "MAX") {
            const Fragment v = IsText(value.tipo) ? Collated(value) : value;
            return Build(function == "MIN" ? "min($1)" : "max($1)", Strength::Whole, {&v}, v.tipo);
        }
        const bool average = function == "AVG";
        if (currency)
            return Build(average ? "jet_moneda(avg($1))" : "jet_moneda(sum($1))", Strength::Whole,
                         {&value}, Tipo::Currency);
        const Tipo tipo = average                       ? Tipo::Double
                          : IsWhole(value.tipo)         ? Tipo::Long
                          : value.tipo == Tipo::Ninguno ? Tipo::Ninguno
                                                        : Tipo::Double;
        return Build(average ? "avg($1)" : "sum($1)", Strength::Whole, {&value}, tipo);
    }

    // FROM

    void AddSources(const From &from, Scope &scope)
    {
        if (from.kind != From::Table) {
            AddSources(*from.left, scope);
            AddSources(*from.right, scope);
            return;
        }
        const Tabla &table = FindTable(from.table, from.place);
        const std::string alias = from.alias.empty() ? table.nombre : from.alias;
        for (const Scope::Source &s : scope.sources)
            if (Plegar(s.alias) == Plegar(alias))
                Fail(from.place, QStringLiteral("The table stands twice under one name"));
        scope.sources.push_back({&table, alias});
        scope.last = scope.sources.size();
    }

    // A table in the order in which the engine joins them, one after the other.
    struct Step {
        size_t source = 0;
        bool optional = false; // LEFT JOIN
        std::optional<Fragment> on;
    };

    std::vector<Step> Flatten(const From &from, size_t &next)
    {
        if (from.kind == From::Table)
            return {Step{next++, false, std::nullopt}};

        const size_t first = next;
        std::vector<Step> left = Flatten(*from.left, next);
        std::vector<Step> right = Flatten(*from.right, next);
        std::optional<Fragment> on;
        if (from.on) {
            m_scope->first = first;
            m_scope->last = next;
            NoteJoined(*from.on);
            on = AsCondition(Emit(*from.on), Strength::Or);
        }
        if (from.kind == From::Right)
            std::swap(left, right);
        if (from.kind == From::Left || from.kind == From::Right) {
            if (right.size() > 1)
                Fail(from.place, QStringLiteral("Only one table can be the optional side"));
            right[0].optional = true;
        } else if (on && std::ranges::any_of(right, &Step::optional)) {
            Fail(from.place, QStringLiteral("An outer join cannot stand on the right side"));
        }
        if (on) {
            // Behind the last table of the right side, all that the condition names is there.
            std::optional<Fragment> &last = right.back().on;
            last = last ? Both(*last, *on) : on;
        }
        std::ranges::move(right, std::back_inserter(left));
        return left;
    }

    // Remembers the columns that the condition of a join makes equal.
    void NoteJoined(const Expression &e)
    {
        if (e.kind != Expression::Binary)
            return;
        if (e.op == Op::And) {
            NoteJoined(*e.parts[0]);
            NoteJoined(*e.parts[1]);
        }
        if (e.op != Op::Equal || e.parts[0]->kind != Expression::Column
            || e.parts[1]->kind != Expression::Column)
            return;
        const auto a = FindInScope(*m_scope, *e.parts[0]);
        const auto b = FindInScope(*m_scope, *e.parts[1]);
        if (a && b)
            m_scope->joined.emplace_back(*a, *b);
    }

    Fragment EmitFrom(const From &from)
    {
        AddSources(from, *m_scope);
        size_t next = 0;
        const std::vector<Step> steps = Flatten(from, next);
        m_scope->first = 0;
        m_scope->last = m_scope->sources.size();

        Fragment f;
        for (const Step &step : steps) {
            const Scope::Source &source = m_scope->sources[step.source];
            if (!f.sql.empty())
                f.sql += step.optional ? " LEFT JOIN " : " JOIN ";
            f.sql += QualifiedTable(*source.table) + " AS " + Quoted(source.alias, '"');
            if (step.on)
                Append(f, " ON ", *step.on, 10);
        }
        return f;
    }

    // SELECT

    enum class Inner { No, Any, OneColumn };

    Fragment EmitUnion(const Select &first)
    {
        if (!first.united)
            return EmitSelect(first, Inner::No);
        m_withKeys = false;
        m_united = true;
        Fragment all;
        std::vector<ColumnaDeSalida> columns;
        for (const Select *s = &first; s; s = s->united.get()) {
            m_out.columnas.clear();
            const Fragment f = EmitSelect(*s, Inner::No);
            Append(all, "", f, 2);
            if (s->united)
                all.sql += s->keepsDuplicates ? " UNION ALL " : " UNION ";
            if (columns.empty())
                columns = m_out.columnas;
            if (columns.size() != m_out.columnas.size())
                Fail(s->place, QStringLiteral("Queries of a UNION have equally many columns"));
            for (size_t i = 0; i < columns.size(); ++i)
                if (columns[i].tipo != m_out.columnas[i].tipo)
                    columns[i].tipo = UnitedType(columns[i].tipo, m_out.columnas[i].tipo);
        }
        m_out.columnas = std::move(columns);
        std::string_view separator = " ORDER BY ";
        for (const Order &o : first.order) {
            all.sql += separator;
            all.sql += std::to_string(UnitedColumn(*o.value) + 1);
            if (IsText(m_out.columnas[UnitedColumn(*o.value)].tipo))
                all.sql += " COLLATE \"JET\"";
            all.sql += o.descending ? " DESC" : "";
            separator = ", ";
        }
        return all;
    }

    static Tipo UnitedType(Tipo a, Tipo b)
    {
        if (IsText(a) && IsText(b))
            return Tipo::Memo;
        if (IsWhole(a) && IsWhole(b))
            return Tipo::Long;
        return (IsWhole(a) || IsFloating(a)) && (IsWhole(b) || IsFloating(b)) ? Tipo::Double
                                                                              : Tipo::Ninguno;
    }

    size_t UnitedColumn(const Expression &e) const
    {
        const auto &columns = m_out.columnas;
        if (e.kind == Expression::Integer && e.integer >= 1 && size_t(e.integer) <= columns.size())
            return size_t(e.integer - 1);
        if (e.kind == Expression::Column && e.table.empty())
            for (size_t i = 0; i < columns.size(); ++i)
                if (Plegar(columns[i].nombre) == Plegar(e.text))
                    return i;
        Fail(e.place, QStringLiteral("A UNION is ordered by its columns"));
    }

    static bool IsGrouped(const Select &s)
    {
        return !s.groups.empty() || std::ranges::any_of(s.fields, [](const Field &f) {
            return f.value && HoldsAggregate(*f.value);
        }) || std::ranges::any_of(s.order, [](const Order &o) { return HoldsAggregate(*o.value); });
    }

    // @p targets the columns that the fields are written to, of an INSERT
    Fragment EmitSelect(const Select &s, Inner inner,
                        const std::vector<const Columna *> *targets = nullptr)
    {
        Scope scope;
        scope.outer = m_scope;
        scope.nesting = m_scope ? m_scope->nesting + 1 : 0;
        m_scope = &scope;

        const bool grouped = IsGrouped(s);
        Fragment from;
        Fragment where;
        if (s.from)
            from = EmitFrom(*s.from);
        if (s.where)
            where = AsCondition(Emit(*s.where), Strength::Or);

        scope.grouping = Scope::Collecting;
        std::vector<Fragment> groups;
        for (const ExpressionPtr &e : s.groups) {
            if (e->kind == Expression::Integer)
                Fail(e->place, QStringLiteral("Grouped by a number"));
            groups.push_back(Term(*e, Emit(*e)));
        }
        scope.grouping = grouped ? Scope::Checked : Scope::Free;
        scope.aggregates = Scope::Aggregates;

        std::vector<Fragment> fields = EmitFields(s, inner);
        if (targets && targets->size() != fields.size())
            Fail(s.place, QStringLiteral("As many values as columns are needed"));
        Fragment all = Plain(s.distinct ? "SELECT DISTINCT " : "SELECT ");
        if (!fields.empty()) {
            all.tipo = fields[0].tipo;
            all.width = fields[0].width;
        }
        const bool united = m_united && inner == Inner::No;
        constexpr int ClauseDepth = 12;
        for (size_t i = 0; i < fields.size(); ++i) {
            Fragment f = targets ? Assigned(*(*targets)[i], fields[i])
                                 : Shown(fields[i], s.distinct || united, inner);
            Append(all, i > 0 ? ", " : "", f, ClauseDepth);
        }
        if (inner == Inner::No && m_withKeys && !targets && !grouped && !s.distinct)
            AppendKeys(all, fields.size());
        if (s.from)
            Append(all, " FROM ", from, 4);
        if (s.where)
            Append(all, " WHERE ", where, ClauseDepth);
        for (size_t i = 0; i < groups.size(); ++i)
            Append(all, i > 0 ? ", " : " GROUP BY ", groups[i], ClauseDepth);
        if (s.having) {
            const Fragment having = AsCondition(Emit(*s.having), Strength::Or);
            Append(all, " HAVING ", having, ClauseDepth);
        }
        if (!united)
            EmitOrder(s, fields, all);
        if (s.top)
            all.sql += " LIMIT " + std::to_string(*s.top);

        m_scope = scope.outer;
        return all;
    }

    // As a term of GROUP BY or ORDER BY.
    Fragment Term(const Expression &e, const Fragment &f) const
    {
        if (f.reach < m_scope->nesting)
            Fail(e.place, QStringLiteral("An inner query has its order and groups for itself"));
        const Fragment v = Value(f);
        if (IsText(v.tipo))
            return Collated(v);
        // A number, or what the engine reduces to one, would mean the position of a field.
        const bool begins =
            std::string_view("-0123456789").find(v.sql[0]) != std::string_view::npos;
        const Fragment number = begins ? At(Strength::Multiply, v) : v;
        return begins ? Build("0 + $1", Strength::Add, {&number}, v.tipo) : v;
    }

    std::vector<Fragment> EmitFields(const Select &s, Inner inner)
    {
        std::vector<Fragment> fields;
        std::vector<ColumnaDeSalida> columns;
        const auto add = [&](Fragment f, const std::string &alias, int place) {
            if (fields.size() == MaxColumns)
                Fail(place, QStringLiteral("Too many columns"));
            fields.push_back(f);
            if (inner != Inner::No)
                return;
            ColumnaDeSalida c;
            c.tipo = f.tipo;
            c.ancho = f.width;
            if (f.column) {
                c.nombre = c.columna = f.column->nombre;
                c.tabla = m_scope->sources.at(f.source).alias;
            } else {
                c.nombre = "Expr" + std::to_string(999 + fields.size());
            }
            if (!alias.empty())
                c.nombre = alias;
            columns.push_back(std::move(c));
        };
        for (const Field &field : s.fields) {
            if (field.all) {
                AddAllColumns(field, add);
                continue;
            }
            Fragment f = Emit(*field.value);
            if (!field.alias.empty())
                m_scope->aliases.emplace(Plegar(field.alias), f);
            add(std::move(f), field.alias, field.place);
        }
        if (inner == Inner::OneColumn && fields.size() != 1)
            Fail(s.place, QStringLiteral("A query within another gives one column"));
        if (inner == Inner::No)
            m_out.columnas = std::move(columns);
        return fields;
    }

    template <typename Add>
    void AddAllColumns(const Field &field, Add add)
    {
        Scope &scope = *m_scope;
        if (scope.grouping == Scope::Checked)
            Fail(field.place, QStringLiteral("All columns cannot stand beside a total"));
        bool found = false;
        for (size_t i = 0; i < scope.sources.size(); ++i) {
            if (!field.table.empty() && Plegar(scope.sources[i].alias) != Plegar(field.table))
                continue;
            found = true;
            for (const Columna &c : scope.sources[i].table->columnas)
                add(ColumnOf(scope, i, c), {}, field.place);
        }
        if (!found)
            FailColumn(field.table.empty() ? "*" : field.table, field.place);
    }

    // As a field of the result. Where rows are compared, a text takes its collation along.
    Fragment Shown(const Fragment &f, bool compared, Inner inner) const
    {
        if (f.rawMemo && !compared && inner == Inner::No)
            return f;
        const Fragment v = Value(f);
        return compared && IsText(v.tipo) ? Collated(v) : v;
    }

    void AppendKeys(Fragment &all, size_t columns)
    {
        for (const Scope::Source &source : m_scope->sources) {
            all.sql += (columns > 0 ? ", " : "") + Quoted(source.alias, '"') + ".rowid";
            m_out.fuentes.push_back({source.table->nombre, source.alias, int(columns++)});
        }
    }

    void EmitOrder(const Select &s, const std::vector<Fragment> &fields, Fragment &all)
    {
        constexpr int Depth = 14;
        std::string_view separator = " ORDER BY ";
        for (const Order &o : s.order) {
            Append(all, separator, Term(*o.value, Ordered(*o.value, fields)), Depth);
            all.sql += o.descending ? " DESC" : "";
            separator = ", ";
        }
    }

    Fragment Ordered(const Expression &e, const std::vector<Fragment> &fields)
    {
        if (e.kind == Expression::Integer) {
            if (e.integer < 1 || size_t(e.integer) > fields.size())
                Fail(e.place, QStringLiteral("No field of that number"));
            return fields[size_t(e.integer - 1)];
        }
        if (e.kind == Expression::Column && e.table.empty()) {
            const auto alias = m_scope->aliases.find(Plegar(e.text));
            if (alias != m_scope->aliases.end())
                return alias->second;
        }
        return Emit(e);
    }

    // Changes

    // A value on its way into a column.
    Fragment Assigned(const Columna &column, const Fragment &f) const
    {
        if (f.literal == Fragment::NullLiteral && column.tipo != Tipo::YesNo)
            return f;
        switch (column.tipo) {
        case Tipo::YesNo: {
            if (f.literal >= Fragment::WholeLiteral)
                return Plain(f.sql.find_first_of("123456789") == f.sql.npos ? "0" : "-1");
            // Whatever is not 0 is Yes, and there is no Null.
            const Fragment v = f.truth ? f : At(Strength::Add, Value(f));
            const Fragment holds = f.truth ? f : Build("$1 <> 0", Strength::Equal, {&v});
            return Build("-ifnull($1, 0)", Strength::Sign, {&holds});
        }
        case Tipo::Memo: {
            const Fragment &v = f.rawMemo ? f : Value(f);
            return Build("jet_memo($1)", Strength::Whole, {&v});
        }
        case Tipo::Currency: {
            const Fragment v = Value(f);
            if (v.tipo == Tipo::Currency || f.literal == Fragment::WholeLiteral)
                return v;
            return Build("jet_moneda($1)", Strength::Whole, {&v});
        }
        case Tipo::Counter:
        case Tipo::Byte:
        case Tipo::Smallint:
        case Tipo::Long: {
            const Fragment v = Value(f);
            return IsFloating(v.tipo) ? Build("jet_entero($1)", Strength::Whole, {&v}) : v;
        }
        case Tipo::Text: {
            const Fragment v = Value(f);
            return IsFloating(v.tipo) ? AsText(v) : v;
        }
        default:
            return Value(f);
        }
    }

    Fragment Assigned(const Columna &column, const Expression &e)
    {
        const bool day = column.tipo == Tipo::Date && IsOpenSum(e);
        return Assigned(column, Emit(e, day ? Tipo::Date : Tipo::Ninguno));
    }

    // The table that a change writes is the only one that its names can mean.
    void OpenTable(const Name &name, Scope &scope)
    {
        const Tabla &table = FindTable(name.text, name.place);
        scope.sources.push_back({&table, table.nombre});
        scope.last = 1;
        m_scope = &scope;
        m_out.tablaEscrita = table.nombre;
    }

    Fragment EmitInsert(const Insert &s)
    {
        const Tabla &table = FindTable(s.table.text, s.table.place);
        m_out.tablaEscrita = table.nombre;
        Fragment all = Plain("INSERT INTO " + QualifiedTable(table) + " (");
        std::vector<const Columna *> columns;
        for (const Name &name : s.columns) {
            const Columna &c = FindColumn(table, name);
            CheckNew(columns, c, name);
            all.sql += (columns.size() > 1 ? ", " : "") + Quoted(c.nombre, '"');
        }
        constexpr int Depth = 12;
        if (s.select) {
            Append(all, ") ", EmitSelect(*s.select, Inner::Any, &columns), Depth);
            return all;
        }
        all.sql += ") VALUES (";
        for (size_t i = 0; i < columns.size(); ++i)
            Append(all, i > 0 ? ", " : "", Assigned(*columns[i], *s.values[i]), Depth);
        all.sql += ")";
        return all;
    }

    void CheckNew(std::vector<const Columna *> &columns, const Columna &c, const Name &name) const
    {
        if (std::ranges::find(columns, &c) != columns.end())
            Fail(name.place, QStringLiteral("The column stands twice"));
        columns.push_back(&c);
    }

    Fragment EmitUpdate(const Update &s)
    {
        Scope scope;
        OpenTable(s.table, scope);
        const Tabla &table = *scope.sources[0].table;
        Fragment all = Plain("UPDATE " + QualifiedTable(table) + " SET ");
        std::vector<const Columna *> columns;
        constexpr int Depth = 10;
        for (const Assignment &a : s.assignments) {
            const Columna &c = FindColumn(table, a.column);
            CheckNew(columns, c, a.column);
            all.sql += (columns.size() > 1 ? ", " : "") + Quoted(c.nombre, '"');
            Append(all, " = ", Assigned(c, *a.value), Depth);
        }
        AppendWhere(all, s.where);
        m_scope = nullptr;
        return all;
    }

    Fragment EmitDelete(const Delete &s)
    {
        Scope scope;
        OpenTable(s.table, scope);
        Fragment all = Plain("DELETE FROM " + QualifiedTable(*scope.sources[0].table));
        AppendWhere(all, s.where);
        m_scope = nullptr;
        return all;
    }

    void AppendWhere(Fragment &all, const ExpressionPtr &where)
    {
        if (where)
            Append(all, " WHERE ", AsCondition(Emit(*where), Strength::Or), 12);
    }

    std::string_view m_sql;
    const Catalogo &m_catalog;
    std::string_view m_schema;
    bool m_withKeys;
    bool m_united = false;
    Scope *m_scope = nullptr;
    Traduccion m_out;
};
} // namespace

Traduccion Traducir(std::string_view sql, const Catalogo &catalogo, std::string_view esquema,
                    bool conClaves)
{
    try {
        return Emitter(sql, catalogo, esquema, conClaves).Translate();
    } catch (const TooLong &) {
        Refuse(sql, 0, QStringLiteral("The statement is too long"));
    }
}

} // namespace jet
