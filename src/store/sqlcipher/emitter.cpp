#include "store/sqlcipher/emitter.h"

#include "store/column_value.h"
#include "store/jet/lexer.h"
#include "store/jet/moment.h"
#include "store/jet/parser.h"
#include "store/jet/text.h"
#include "store/sqlcipher/fragment.h"

#include <algorithm>
#include <array>
#include <map>
#include <optional>

using namespace store;
using namespace jet;

namespace sqlcipher
{
namespace
{
// The engine's limits with some margin, so that statements beyond them are refused here.
constexpr int MaxEngineStack = 90;   // of 100 entries
constexpr int MaxEngineHeight = 900; // of 1000
constexpr size_t MaxColumns = 1500;  // of 2000

QString fromUtf8(std::string_view s) { return QString::fromUtf8(s.data(), qsizetype(s.size())); }

// A binary operator that the engine has as well.
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
    // Between integers the engine would drop the fraction.
    Operator{Op::Divide, "$1 * 1.0 / $2", Strength::Multiply},
    Operator{Op::IntegerDivide, "$1 / $2", Strength::Multiply},
    Operator{Op::Modulo, "$1 % $2", Strength::Multiply},
};
const Operator &find(Op op) { return *std::ranges::find(Operators, op, &Operator::op); }

// Functions of the dialect and their form in the engine. Arguments: t text, n number, m date or
// time. ColumnType::None means the type of the first argument.
struct Function {
    const char *name;
    const char *arguments;
    const char *pattern;
    ColumnType type;
};
constexpr std::array Functions{
    Function{"ABS", "n", "abs($1)", ColumnType::None},
    Function{"CSTR", "t", "$1", ColumnType::Text},
    Function{"DAY", "m", "CAST(substr($1, 9, 2) AS INTEGER)", ColumnType::Long},
    Function{"INT", "n", "jet_int($1)", ColumnType::None},
    Function{"LCASE", "t", "jet_lcase($1)", ColumnType::Text},
    Function{"LEFT", "tn", "jet_mid($1, 1, $2)", ColumnType::Text},
    Function{"LEN", "t", "length($1)", ColumnType::Long},
    Function{"MID", "tn", "jet_mid($1, $2)", ColumnType::Text},
    Function{"MID", "tnn", "jet_mid($1, $2, $3)", ColumnType::Text},
    Function{"MONTH", "m", "CAST(substr($1, 6, 2) AS INTEGER)", ColumnType::Long},
    Function{"RIGHT", "tn", "jet_right($1, $2)", ColumnType::Text},
    Function{"ROUND", "n", "jet_round($1, 0)", ColumnType::None},
    Function{"ROUND", "nn", "jet_round($1, $2)", ColumnType::None},
    Function{"TRIM", "t", "trim($1)", ColumnType::Text},
    Function{"UCASE", "t", "jet_ucase($1)", ColumnType::Text},
    Function{"VAL", "t", "jet_val($1)", ColumnType::Double},
    Function{"YEAR", "m", "CAST(substr($1, 1, 4) AS INTEGER)", ColumnType::Long},
};

// The tables and columns that names in a query can refer to.
struct Scope {
    struct Source {
        const Table *table;
        std::string alias;
    };
    using Key = std::pair<size_t, const Column *>; // source and column

    std::vector<Source> sources;
    size_t first = 0; // visible sources; only those of the join within its condition
    size_t last = 0;
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
    Emitter(std::string_view sql, const Catalogue &catalog, std::string_view schema, bool withKeys)
        : m_sql(sql), m_catalog(catalog), m_schema(schema), m_withKeys(withKeys)
    {
    }

    Translation translate()
    {
        jet::Statement s = parseStatement(m_sql);
        m_out.valueCount = s.given;
        for (int i = 0; i < s.given; ++i)
            m_out.parameters.push_back({Parameter::Given, i});
        Fragment f;
        if (auto *select = std::get_if<std::unique_ptr<Select>>(&s.body)) {
            m_out.kind = Translation::Query;
            f = emitUnion(**select);
        } else if (auto *definition = std::get_if<Definition>(&s.body)) {
            m_out.kind = Translation::Define;
            m_out.definition = std::move(*definition);
        } else {
            m_out.kind = Translation::Change;
            if (auto *insert = std::get_if<Insert>(&s.body))
                f = emitInsert(*insert);
            else if (auto *update = std::get_if<Update>(&s.body))
                f = emitUpdate(*update);
            else
                f = emitDelete(std::get<Delete>(s.body));
        }
        if (f.stack > MaxEngineStack || f.height > MaxEngineHeight)
            fail(0, QStringLiteral("The statement is too deeply nested"));
        m_out.sql = std::move(f.sql);
        return std::move(m_out);
    }

private:
    [[noreturn]] void fail(int place, const QString &reason, int number = ErrorNumber::Syntax) const
    {
        refuse(m_sql, place, reason, number);
    }

    Fragment special(Parameter::Origin origin, ColumnType type)
    {
        auto &parameters = m_out.parameters;
        auto found = std::ranges::find(parameters, origin, &Parameter::origin);
        if (found == parameters.end())
            found = parameters.insert(parameters.end(), Parameter{origin, 0});
        return asPlain("?" + std::to_string(found - parameters.begin() + 1), type);
    }

    // --- Names ---

    const Table &findTable(std::string_view name, int place) const
    {
        const Table *table = m_catalog.find(name);
        if (!table)
            fail(place, QStringLiteral("No table \"%1\"").arg(fromUtf8(name)),
                 ErrorNumber::TableNotFound);
        return *table;
    }

    std::string qualifiedTable(const Table &table) const
    {
        return quoted(m_schema, '"') + "." + quoted(table.name, '"');
    }

    const Column *findColumn(const Table &table, std::string_view folded) const
    {
        const auto found = std::ranges::find_if(
            table.columns, [&](const Column &c) { return fold(c.name) == folded; });
        return found == table.columns.end() ? nullptr : &*found;
    }

    const Column &findColumn(const Table &table, const Name &name) const
    {
        if (const Column *c = findColumn(table, fold(name.text)))
            return *c;
        failColumn(name.text, name.place);
    }

    [[noreturn]] void failColumn(std::string_view name, int place) const
    {
        fail(place, QStringLiteral("No column \"%1\"").arg(fromUtf8(name)),
             ErrorNumber::Parameters);
    }

    Fragment columnOf(const Scope &scope, size_t source, const Column &column) const
    {
        Fragment f = asPlain(
            quoted(scope.sources[source].alias, '"') + "." + quoted(column.name, '"'), column.type);
        f.stack = 3;
        f.reach = scope.nesting;
        f.width = column.width;
        f.rawMemo = column.type == ColumnType::Memo;
        f.column = &column;
        f.source = source;
        return f;
    }

    std::optional<Scope::Key> findInScope(const Scope &scope, const Expression &e) const
    {
        const std::string name = fold(e.text);
        if (!e.table.empty()) {
            const std::string qualifier = fold(e.table);
            for (size_t i = scope.first; i < scope.last; ++i) {
                if (fold(scope.sources[i].alias) != qualifier)
                    continue;
                if (const Column *c = findColumn(*scope.sources[i].table, name))
                    return Scope::Key{i, c};
                failColumn(e.text, e.place);
            }
            return std::nullopt;
        }
        std::optional<Scope::Key> found;
        for (size_t i = scope.first; i < scope.last; ++i) {
            const Column *c = findColumn(*scope.sources[i].table, name);
            if (!c)
                continue;
            if (found)
                fail(e.place,
                     QStringLiteral("\"%1\" is a column of several tables").arg(fromUtf8(e.text)),
                     ErrorNumber::Parameters);
            found = Scope::Key{i, c};
        }
        return found;
    }

    // A name means a column of the nearest enclosing query that has one, or an earlier field of
    // this query.
    Fragment emitColumn(const Expression &e)
    {
        for (Scope *scope = m_scope; scope; scope = scope->outer) {
            if (const auto key = findInScope(*scope, e)) {
                checkGroup(*scope, *key, e);
                checkHidden(*scope, key->first, e);
                return columnOf(*scope, key->first, *key->second);
            }
            if (scope == m_scope && e.table.empty()) {
                const auto alias = scope->aliases.find(fold(e.text));
                if (alias != scope->aliases.end()) {
                    if (alias->second.aggregate && scope->aggregates != Scope::Aggregates)
                        fail(e.place, QStringLiteral("A total cannot stand here"));
                    return alias->second;
                }
            }
            if (scope->aggregates == Scope::InAggregate)
                break; // the engine would compute the aggregate over the outer query
        }
        failColumn(e.table.empty() ? e.text : e.table + "." + e.text, e.place);
    }

    void checkGroup(Scope &scope, const Scope::Key &key, const Expression &e) const
    {
        if (scope.grouping == Scope::Collecting)
            scope.groups.push_back(key);
        if (scope.grouping == Scope::Checked && scope.aggregates != Scope::InAggregate
            && std::ranges::find(scope.groups, key) == scope.groups.end())
            fail(e.place, QStringLiteral("\"%1\" is neither grouped nor part of a total")
                              .arg(fromUtf8(e.text)));
    }

    // In the engine, the name would mean a table of an inner query that has the same alias.
    void checkHidden(const Scope &scope, size_t source, const Expression &e) const
    {
        const std::string alias = fold(scope.sources[source].alias);
        for (const Scope *s = m_scope; s != &scope; s = s->outer)
            for (const Scope::Source &inner : s->sources)
                if (fold(inner.alias) == alias)
                    failColumn(e.text, e.place);
    }

    // --- Expressions ---

    // @p expected is the type assumed for a '?' that is added to a number
    Fragment emitTree(const Expression &e, ColumnType expected = ColumnType::None)
    {
        switch (e.kind) {
        case Expression::Null: {
            Fragment f = asPlain("NULL");
            f.literal = Fragment::NullLiteral;
            return f;
        }
        case Expression::Integer:
        case Expression::Logical: {
            const bool logical = e.kind == Expression::Logical;
            Fragment f =
                asPlain(std::to_string(e.integer), logical ? ColumnType::YesNo : ColumnType::Long);
            f.literal = Fragment::WholeLiteral;
            f.strength = e.integer < 0 ? Strength::Sign : Strength::Whole;
            f.stack = 2;
            return f;
        }
        case Expression::Decimal: {
            Fragment f = asPlain(e.text, ColumnType::Double);
            const size_t point = e.text.find('.');
            if (e.text.find_first_of("eE") == e.text.npos && e.text.size() - point <= 5)
                f.literal = Fragment::DecimalLiteral;
            return f;
        }
        case Expression::Text:
            return asPlain(quoted(e.text, '\''), ColumnType::Text);
        case Expression::Moment:
            return asPlain(quoted(e.text, '\''), e.type);
        case Expression::Given:
            return asPlain("?" + std::to_string(e.integer + 1), expected);
        case Expression::Column:
            return emitColumn(e);
        case Expression::Negate:
            return emitNegation(e);
        case Expression::Not: {
            const Fragment part = asCondition(emitTree(*e.parts[0]), Strength::Equal);
            return truth(build("NOT $1", Strength::Not, {&part}));
        }
        case Expression::Binary:
            return emitBinary(e, expected);
        case Expression::Between:
            return emitBetween(e);
        case Expression::In:
            return emitIn(e);
        case Expression::IsNull: {
            const Fragment f = emitTree(*e.parts[0]);
            const Fragment part = at(Strength::Add, f.rawMemo ? f : asValue(f));
            return truth(
                build(e.negated ? "$1 IS NOT NULL" : "$1 IS NULL", Strength::Equal, {&part}));
        }
        case Expression::Call:
            return emitCall(e);
        case Expression::Exists: {
            const Fragment f = emitSelect(*e.select, Inner::Any);
            return truth(build("EXISTS ($1)", Strength::Whole, {&f}));
        }
        case Expression::Subselect: {
            const Fragment f = emitSelect(*e.select, Inner::OneColumn);
            Fragment value = build("($1)", Strength::Whole, {&f}, f.type);
            value.width = f.width;
            value.aggregate = false;
            return value;
        }
        }
        return {};
    }

    static Fragment truth(Fragment f)
    {
        f.truth = true;
        f.type = ColumnType::YesNo;
        return f;
    }

    Fragment both(const Fragment &left, const Fragment &right) const
    {
        const Fragment l = asCondition(left, Strength::And);
        const Fragment r = asCondition(right, Strength::Not);
        return truth(build("$1 AND $2", Strength::And, {&l, &r}));
    }

    Fragment emitNegation(const Expression &e)
    {
        const Fragment part = asValue(emitTree(*e.parts[0]));
        if (isMoment(part.type))
            fail(e.place, QStringLiteral("A date has no sign"));
        if (part.literal == Fragment::NullLiteral)
            return part;
        // "--" would start a comment.
        const Fragment whole = at(Strength::Whole, part);
        Fragment f = build("-$1", Strength::Sign, {&whole}, numberType(part.type));
        f.literal = part.literal;
        return f;
    }

    static ColumnType numberType(ColumnType t)
    {
        return t == ColumnType::YesNo        ? ColumnType::Long
               : isTextual(t) || isMoment(t) ? ColumnType::Double
                                             : t;
    }

    // Whether to ignore letter case: one side is text and none is known to be anything else.
    static bool comparesText(std::initializer_list<const Fragment *> sides)
    {
        const auto isText = [](const Fragment *f) { return isTextual(f->type); };
        const auto isOther = [](const Fragment *f) {
            return !isTextual(f->type) && f->type != ColumnType::None;
        };
        return std::any_of(sides.begin(), sides.end(), isText)
               && std::none_of(sides.begin(), sides.end(), isOther);
    }

    // A '?' plus or minus a number, which is a date if it is compared with one.
    static bool isOpenSum(const Expression &e)
    {
        const auto simple = [](const Expression &p) {
            return p.kind == Expression::Given || p.kind == Expression::Integer;
        };
        return e.kind == Expression::Binary && (e.op == Op::Add || e.op == Op::Subtract)
               && simple(*e.parts[0]) && simple(*e.parts[1]);
    }

    // Operands of a comparison.
    std::vector<Fragment> emitCompared(const Expression &e)
    {
        std::vector<Fragment> sides(e.parts.size());
        ColumnType expected = ColumnType::None;
        for (const bool open : {false, true}) {
            for (size_t i = 0; i < sides.size(); ++i) {
                if (isOpenSum(*e.parts[i]) != open)
                    continue;
                sides[i] = asValue(emitTree(*e.parts[i], expected));
                if (sides[i].type == ColumnType::Date)
                    expected = ColumnType::Date;
            }
        }
        const auto moment = std::ranges::find_if(sides, isMoment, &Fragment::type);
        if (moment != sides.end())
            for (size_t i = 0; i < sides.size(); ++i)
                sides[i] = asMoment(sides[i], *e.parts[i], moment->type);
        return sides;
    }

    // An operand compared with a date or time must be one as well: the files store them as text,
    // which the engine would compare with a number or any other text without complaint.
    Fragment asMoment(const Fragment &f, const Expression &e, ColumnType type)
    {
        if (e.kind == Expression::Given) {
            m_out.parameters[size_t(e.integer)].compared = type;
            return f;
        }
        if (f.type == type || f.literal == Fragment::NullLiteral)
            return f;
        if (e.kind == Expression::Text)
            return literal(converted(e.place, [&] { return toMoment(textOf(e), type); }), type);
        if (f.type != ColumnType::None)
            FailMoment(e.place);
        return f;
    }

    [[noreturn]] void FailMoment(int place) const
    {
        fail(place, QStringLiteral("A day or a time goes with its like only"),
             ErrorNumber::TypeMismatch);
    }

    static Value textOf(const Expression &e) { return QString::fromStdString(e.text); }

    // The result of a conversion; if it throws, the error points at the place.
    template <typename F>
    Value converted(int place, F &&convert) const
    {
        try {
            return convert();
        } catch (const StoreError &error) {
            fail(place, error.description, error.number);
        }
    }

    // A value known now, in the engine's SQL.
    static Fragment literal(const Value &value, ColumnType type)
    {
        if (value.isNull())
            return asPlain("NULL", type);
        const std::string text = value.toText().toStdString();
        const bool asText = isTextual(type) || isMoment(type);
        Fragment f = asPlain(asText ? quoted(text, '\'') : text, type);
        f.strength = text.starts_with('-') && !asText ? Strength::Sign : Strength::Whole;
        f.stack = 2;
        return f;
    }

    Fragment emitBinary(const Expression &e, ColumnType expected)
    {
        switch (e.op) {
        case Op::Or: {
            const Fragment l = asCondition(emitTree(*e.parts[0]), Strength::Or);
            const Fragment r = asCondition(emitTree(*e.parts[1]), Strength::And);
            return truth(build("$1 OR $2", Strength::Or, {&l, &r}));
        }
        case Op::And:
            return both(emitTree(*e.parts[0]), emitTree(*e.parts[1]));
        case Op::Like: {
            const Fragment l = asText(emitTree(*e.parts[0]));
            const Fragment r = asText(emitTree(*e.parts[1]));
            return truth(e.negated ? build("NOT jet_like($1, $2)", Strength::Not, {&l, &r})
                                   : build("jet_like($1, $2)", Strength::Whole, {&l, &r}));
        }
        case Op::Equal:
        case Op::NotEqual:
        case Op::Less:
        case Op::LessEqual:
        case Op::Greater:
        case Op::GreaterEqual: {
            const Operator &o = find(e.op);
            const auto sides = emitCompared(e);
            const bool text = comparesText({&sides[0], &sides[1]});
            const Fragment l = at(Strength::Add, sides[0]);
            const Fragment r = at(Strength::Add, text ? collated(sides[1]) : sides[1]);
            return truth(build(o.pattern, o.strength, {&l, &r}));
        }
        case Op::Concatenate:
            return concatenated(emitTree(*e.parts[0]), emitTree(*e.parts[1]));
        default:
            return emitArithmetic(e, expected);
        }
    }

    // Null counts as empty text.
    Fragment concatenated(const Fragment &left, const Fragment &right) const
    {
        const auto operand = [](const Fragment &f) {
            const Fragment text = asText(f);
            if (text.sql.starts_with('\''))
                return text;
            if (text.joined)
                return text;
            return build("ifnull($1, '')", Strength::Whole, {&text}, ColumnType::Text);
        };
        const Fragment l = at(Strength::Concatenate, operand(left));
        const Fragment r = at(Strength::Sign, operand(right));
        Fragment f = build("$1 || $2", Strength::Concatenate, {&l, &r}, ColumnType::Text);
        f.joined = true;
        return f;
    }

    Fragment emitArithmetic(const Expression &e, ColumnType expected)
    {
        const bool sum = e.op == Op::Add || e.op == Op::Subtract;
        const bool dayOnTheRight = expected == ColumnType::Date && e.op == Op::Add
                                   && e.parts[0]->kind == Expression::Integer;
        const Fragment l =
            asValue(emitTree(*e.parts[0], dayOnTheRight ? ColumnType::None : expected));
        const Fragment r =
            asValue(emitTree(*e.parts[1], dayOnTheRight ? expected : ColumnType::None));
        if (isMoment(l.type) || isMoment(r.type))
            return dayArithmetic(e, l, r);
        if (e.op == Op::Add && (isTextual(l.type) || isTextual(r.type)) && textOrUnknown(l)
            && textOrUnknown(r)) {
            const Fragment left = at(Strength::Concatenate, l);
            const Fragment right = at(Strength::Sign, r);
            return build("$1 || $2", Strength::Concatenate, {&left, &right}, ColumnType::Text);
        }

        const Operator &o = find(e.op);
        if (e.op == Op::IntegerDivide || e.op == Op::Modulo) {
            const Fragment left = at(Strength::Multiply, rounded(l));
            const Fragment right = at(Strength::Concatenate, rounded(r));
            return build(o.pattern, o.strength, {&left, &right}, ColumnType::Long);
        }
        // A sum of several amounts is rounded only once, at the end.
        const Fragment left =
            at(sum ? Strength::Add : Strength::Multiply, sum && l.unrounded ? *l.unrounded : l);
        const Fragment right = at(sum ? Strength::Multiply : Strength::Concatenate, r);
        if (e.op == Op::Divide)
            return build(o.pattern, o.strength, {&left, &right}, ColumnType::Double);
        if (!isExact(l, r))
            return build(o.pattern, o.strength, {&left, &right}, arithmeticType(l, r));
        const Fragment exact = build(o.pattern, o.strength, {&left, &right});
        Fragment rounded = build("jet_moneda($1)", Strength::Whole, {&exact}, ColumnType::Currency);
        if (sum)
            rounded.unrounded = std::make_shared<const Fragment>(exact);
        return rounded;
    }

    static bool textOrUnknown(const Fragment &f)
    {
        return isTextual(f.type)
               || (f.type == ColumnType::None && f.literal == Fragment::NoLiteral);
    }

    // Whether the result is an amount: one side is, or both are numeric literals and one of them
    // has decimals.
    static bool isExact(const Fragment &l, const Fragment &r)
    {
        return l.type == ColumnType::Currency || r.type == ColumnType::Currency
               || (l.literal == Fragment::DecimalLiteral && r.literal >= Fragment::WholeLiteral)
               || (r.literal == Fragment::DecimalLiteral && l.literal >= Fragment::WholeLiteral);
    }

    static ColumnType arithmeticType(const Fragment &l, const Fragment &r)
    {
        const bool whole = isWhole(l.type) && isWhole(r.type);
        return whole                                                      ? ColumnType::Long
               : l.type == ColumnType::None && r.type == ColumnType::None ? ColumnType::None
               : isFloating(l.type) || isFloating(r.type) || isTextual(l.type) || isTextual(r.type)
                   ? ColumnType::Double
                   : ColumnType::None;
    }

    // Rounded to an integer.
    Fragment rounded(const Fragment &f) const
    {
        if (isWhole(f.type))
            return f;
        return build("jet_entero($1)", Strength::Whole, {&f}, ColumnType::Long);
    }

    Fragment dayArithmetic(const Expression &e, const Fragment &l, const Fragment &r) const
    {
        const auto isNumber = [](const Fragment &f) {
            return isWhole(f.type) || isFloating(f.type) || f.type == ColumnType::None;
        };
        constexpr auto Pattern = "jet_dateadd('d', $1, $2)";
        if (e.op == Op::Add && l.type == ColumnType::Date && isNumber(r))
            return build(Pattern, Strength::Whole, {&r, &l}, ColumnType::Date);
        if (e.op == Op::Add && r.type == ColumnType::Date && isNumber(l))
            return build(Pattern, Strength::Whole, {&l, &r}, ColumnType::Date);
        if (e.op == Op::Subtract && l.type == ColumnType::Date && r.type == ColumnType::Date)
            return build("jet_datediff('d', $2, $1)", Strength::Whole, {&l, &r}, ColumnType::Long);
        if (e.op == Op::Subtract && l.type == ColumnType::Date && isNumber(r)) {
            const Fragment number = at(Strength::Whole, r);
            const Fragment back = build("-$1", Strength::Sign, {&number});
            return build(Pattern, Strength::Whole, {&back, &l}, ColumnType::Date);
        }
        fail(e.place, QStringLiteral("Days do not reckon so"));
    }

    Fragment emitBetween(const Expression &e)
    {
        const auto sides = emitCompared(e);
        const bool text = comparesText({&sides[0], &sides[1], &sides[2]});
        const Fragment value = at(Strength::Add, text ? collated(sides[0]) : sides[0]);
        const Fragment a = text ? collated(sides[1]) : sides[1];
        const Fragment &b = sides[2];
        // On purpose: the bounds may be in either order.
        return truth(build(e.negated ? "$1 NOT BETWEEN min($2, $3) AND max($2, $3)"
                                     : "$1 BETWEEN min($2, $3) AND max($2, $3)",
                           Strength::Equal, {&value, &a, &b}));
    }

    Fragment emitIn(const Expression &e)
    {
        const auto sides = emitCompared(e);
        Fragment list;
        bool text = isTextual(sides[0].type);
        if (e.select) {
            const Fragment rows = emitSelect(*e.select, Inner::OneColumn);
            text = comparesText({&sides[0], &rows});
            if ((isMoment(sides[0].type) || isMoment(rows.type)) && sides[0].type != rows.type
                && sides[0].type != ColumnType::None && rows.type != ColumnType::None)
                FailMoment(e.place);
            list = build("$1", Strength::Whole, {&rows});
        } else {
            for (size_t i = 1; i < sides.size(); ++i) {
                text = text || comparesText({&sides[0], &sides[i]});
                append(list, i > 1 ? ", " : "", sides[i], 1);
            }
        }
        const Fragment value = at(Strength::Add, text ? collated(sides[0]) : sides[0]);
        return truth(
            build(e.negated ? "$1 NOT IN ($2)" : "$1 IN ($2)", Strength::Equal, {&value, &list}));
    }

    // --- Functions ---

    Fragment emitCall(const Expression &e)
    {
        if (isAggregate(e.text))
            return emitAggregate(e);
        const size_t n = e.parts.size();
        if (e.text == "DATE" && n == 0)
            return special(Parameter::Today, ColumnType::Date);
        if (e.text == "TIME" && n == 0)
            return special(Parameter::Hour, ColumnType::Time);
        if (e.text == "NOW" && n == 0)
            return special(Parameter::Now, ColumnType::Date);
        if (e.text == "IIF" && n == 3)
            return emitIif(e);
        if (e.text == "NZ" && (n == 1 || n == 2))
            return emitNz(e);
        if ((e.text == "DATEADD" || e.text == "DATEDIFF") && n == 3)
            return emitDateFunction(e);

        const auto found = std::ranges::find_if(Functions, [&](const Function &f) {
            return e.text == f.name && std::string_view(f.arguments).size() == n;
        });
        if (found == Functions.end())
            fail(e.place,
                 QStringLiteral("No function \"%1\" with so many values").arg(fromUtf8(e.text)));
        std::array<Fragment, 3> a;
        for (size_t i = 0; i < n; ++i) {
            const Fragment f = emitTree(*e.parts[i]);
            a[i] = found->arguments[i] == 't' ? asText(f) : asValue(f);
        }
        if (std::string_view(found->pattern) == "$1")
            return build("$1", a[0].strength, {&a[0]}, found->type);
        const ColumnType type =
            found->type == ColumnType::None ? numberType(a[0].type) : found->type;
        return build(found->pattern, Strength::Whole, {&a[0], &a[1], &a[2]}, type);
    }

    Fragment emitIif(const Expression &e)
    {
        const Fragment condition = asCondition(emitTree(*e.parts[0]), Strength::Or);
        const Fragment yes = asValue(emitTree(*e.parts[1]));
        const Fragment no = asValue(emitTree(*e.parts[2]));
        return build("CASE WHEN $1 THEN $2 ELSE $3 END", Strength::Whole, {&condition, &yes, &no},
                     commonType(yes, no));
    }

    Fragment emitNz(const Expression &e)
    {
        const Fragment value = asValue(emitTree(*e.parts[0]));
        const bool number = isWhole(value.type) || isFloating(value.type);
        const Fragment instead = e.parts.size() == 2 ? asValue(emitTree(*e.parts[1]))
                                 : number            ? asPlain("0", value.type)
                                                     : asPlain("''", ColumnType::Text);
        return build("ifnull($1, $2)", Strength::Whole, {&value, &instead},
                     commonType(value, instead));
    }

    // Type of an expression that gives one of two values.
    static ColumnType commonType(const Fragment &a, const Fragment &b)
    {
        if (a.type == b.type || b.literal == Fragment::NullLiteral)
            return a.type;
        if (a.literal == Fragment::NullLiteral)
            return b.type;
        if (isTextual(a.type) && isTextual(b.type))
            return ColumnType::Memo;
        if (isWhole(a.type) && isWhole(b.type))
            return ColumnType::Long;
        const bool literal =
            a.literal >= Fragment::WholeLiteral || b.literal >= Fragment::WholeLiteral;
        if (literal && (a.type == ColumnType::Currency || b.type == ColumnType::Currency))
            return ColumnType::Currency;
        const auto isNumber = [](ColumnType t) { return isWhole(t) || isFloating(t); };
        return isNumber(a.type) && isNumber(b.type) ? ColumnType::Double : ColumnType::None;
    }

    Fragment emitDateFunction(const Expression &e)
    {
        const bool difference = e.text == "DATEDIFF";
        const Expression &unit = *e.parts[0];
        if (unit.kind != Expression::Text || !intervalFromText(unit.text, difference))
            fail(unit.place, QStringLiteral("An interval such as \"d\" expected"));
        const Fragment interval = emitTree(unit);
        const Fragment a = asValue(emitTree(*e.parts[1]));
        const Fragment b = asValue(emitTree(*e.parts[2]));
        if (difference)
            return build("jet_datediff($1, $2, $3)", Strength::Whole, {&interval, &a, &b},
                         ColumnType::Long);
        return build("jet_dateadd($1, $2, $3)", Strength::Whole, {&interval, &a, &b},
                     b.type == ColumnType::Time ? ColumnType::Time : ColumnType::Date);
    }

    Fragment emitAggregate(const Expression &e)
    {
        if (!m_scope || m_scope->aggregates != Scope::Aggregates)
            fail(e.place, QStringLiteral("A total cannot stand here"));
        if (!e.star && e.parts.size() != 1)
            fail(e.place, QStringLiteral("A total takes one value"));
        if (e.star) {
            Fragment f = asPlain("count(*)", ColumnType::Long);
            f.aggregate = true;
            f.stack = 4;
            return f;
        }
        m_scope->aggregates = Scope::InAggregate;
        const Fragment raw = emitTree(*e.parts[0]);
        m_scope->aggregates = Scope::Aggregates;
        Fragment f = total(e.text, raw);
        f.aggregate = true;
        return f;
    }

    Fragment total(const std::string &function, const Fragment &raw) const
    {
        if (function == "COUNT")
            return build("count($1)", Strength::Whole, {&raw}, ColumnType::Long);
        const Fragment value = asValue(raw);
        const bool currency = value.type == ColumnType::Currency;
        if (function == "MIN" || function == "MAX") {
            const Fragment v = isTextual(value.type) ? collated(value) : value;
            return build(function == "MIN" ? "min($1)" : "max($1)", Strength::Whole, {&v}, v.type);
        }
        const bool average = function == "AVG";
        if (currency)
            return build(average ? "jet_moneda(avg($1))" : "jet_moneda(sum($1))", Strength::Whole,
                         {&value}, ColumnType::Currency);
        const ColumnType type = average                          ? ColumnType::Double
                                : isWhole(value.type)            ? ColumnType::Long
                                : value.type == ColumnType::None ? ColumnType::None
                                                                 : ColumnType::Double;
        return build(average ? "avg($1)" : "sum($1)", Strength::Whole, {&value}, type);
    }

    // --- FROM ---

    void addSources(const From &from, Scope &scope)
    {
        if (from.kind != From::Table) {
            addSources(*from.left, scope);
            addSources(*from.right, scope);
            return;
        }
        const Table &table = findTable(from.table, from.place);
        const std::string alias = from.alias.empty() ? table.name : from.alias;
        for (const Scope::Source &s : scope.sources)
            if (fold(s.alias) == fold(alias))
                fail(from.place, QStringLiteral("The table stands twice under one name"));
        scope.sources.push_back({&table, alias});
        m_out.tables.push_back(table.name);
        scope.last = scope.sources.size();
    }

    // A table and how it joins those before it; the engine joins them one by one.
    struct Step {
        size_t source = 0;
        bool optional = false; // LEFT JOIN
        std::optional<Fragment> on;
    };

    std::vector<Step> flatten(const From &from, size_t &next)
    {
        if (from.kind == From::Table)
            return {Step{next++, false, std::nullopt}};

        const size_t first = next;
        std::vector<Step> left = flatten(*from.left, next);
        std::vector<Step> right = flatten(*from.right, next);
        std::optional<Fragment> on;
        if (from.on) {
            m_scope->first = first;
            m_scope->last = next;
            on = asCondition(emitTree(*from.on), Strength::Or);
        }
        if (from.kind == From::Right)
            std::swap(left, right);
        if (from.kind == From::Left || from.kind == From::Right) {
            if (right.size() > 1)
                fail(from.place, QStringLiteral("Only one table can be the optional side"));
            right[0].optional = true;
        } else if (on && std::ranges::any_of(right, &Step::optional)) {
            fail(from.place, QStringLiteral("An outer join cannot stand on the right side"));
        }
        if (on) {
            // After the last table of the right side, all tables in the condition have been joined.
            std::optional<Fragment> &last = right.back().on;
            last = last ? both(*last, *on) : on;
        }
        std::ranges::move(right, std::back_inserter(left));
        return left;
    }

    Fragment emitFrom(const From &from)
    {
        addSources(from, *m_scope);
        size_t next = 0;
        const std::vector<Step> steps = flatten(from, next);
        m_scope->first = 0;
        m_scope->last = m_scope->sources.size();

        Fragment f;
        for (const Step &step : steps) {
            const Scope::Source &source = m_scope->sources[step.source];
            if (!f.sql.empty())
                f.sql += step.optional ? " LEFT JOIN " : " JOIN ";
            f.sql += qualifiedTable(*source.table) + " AS " + quoted(source.alias, '"');
            if (step.on)
                append(f, " ON ", *step.on, 10);
        }
        return f;
    }

    // --- SELECT ---

    enum class Inner { No, Any, OneColumn };

    Fragment emitUnion(const Select &first)
    {
        if (!first.united)
            return emitSelect(first, Inner::No);
        m_withKeys = false;
        m_united = true;
        Fragment all;
        std::vector<OutputColumn> columns;
        for (const Select *s = &first; s; s = s->united.get()) {
            m_out.columns.clear();
            const Fragment f = emitSelect(*s, Inner::No);
            append(all, "", f, 2);
            if (s->united)
                all.sql += s->keepsDuplicates ? " UNION ALL " : " UNION ";
            if (columns.empty())
                columns = m_out.columns;
            if (columns.size() != m_out.columns.size())
                fail(s->place, QStringLiteral("Queries of a UNION have equally many columns"));
            for (size_t i = 0; i < columns.size(); ++i)
                if (columns[i].type != m_out.columns[i].type)
                    columns[i].type = unitedType(columns[i].type, m_out.columns[i].type);
        }
        m_out.columns = std::move(columns);
        std::string_view separator = " ORDER BY ";
        for (const Order &o : first.order) {
            all.sql += separator;
            all.sql += std::to_string(unitedColumn(*o.value) + 1);
            if (isTextual(m_out.columns[unitedColumn(*o.value)].type))
                all.sql += " COLLATE \"JET\"";
            all.sql += o.descending ? " DESC" : "";
            separator = ", ";
        }
        return all;
    }

    static ColumnType unitedType(ColumnType a, ColumnType b)
    {
        if (isTextual(a) && isTextual(b))
            return ColumnType::Memo;
        if (isWhole(a) && isWhole(b))
            return ColumnType::Long;
        return (isWhole(a) || isFloating(a)) && (isWhole(b) || isFloating(b)) ? ColumnType::Double
                                                                              : ColumnType::None;
    }

    size_t unitedColumn(const Expression &e) const
    {
        const auto &columns = m_out.columns;
        if (e.kind == Expression::Integer && e.integer >= 1 && size_t(e.integer) <= columns.size())
            return size_t(e.integer - 1);
        if (e.kind == Expression::Column && e.table.empty())
            for (size_t i = 0; i < columns.size(); ++i)
                if (fold(columns[i].name) == fold(e.text))
                    return i;
        fail(e.place, QStringLiteral("A UNION is ordered by its columns"));
    }

    // Whether rows that the statement leaves unordered come in the order of their entry. Rows of an
    // updatable recordset always do. If rows are only read, joins and ranges are left to the
    // engine: a join has no order of entry, and for a range the engine would scan the whole table
    // rather than sort what an index finds.
    bool isOrdered(const Select &s, bool seen) const
    {
        if (!s.from || (!seen && !s.top))
            return false;
        return !s.order.empty() || (seen && m_withKeys)
               || (s.from->kind == From::Table && !(s.where && holdsRange(*s.where)));
    }

    static bool holdsRange(const Expression &e)
    {
        const bool range =
            e.kind == Expression::Between || e.kind == Expression::In
            || (e.kind == Expression::Binary && e.op >= Op::Less && e.op <= Op::GreaterEqual);
        return range || std::ranges::any_of(e.parts, [](const ExpressionPtr &p) {
                   return holdsRange(*p);
               });
    }

    static bool isGrouped(const Select &s)
    {
        return !s.groups.empty() || std::ranges::any_of(s.fields, [](const Field &f) {
            return f.value && holdsAggregate(*f.value);
        }) || std::ranges::any_of(s.order, [](const Order &o) { return holdsAggregate(*o.value); });
    }

    // @p targets columns that an INSERT writes the fields to
    Fragment emitSelect(const Select &s, Inner inner,
                        const std::vector<const Column *> *targets = nullptr)
    {
        Scope scope;
        scope.outer = m_scope;
        scope.nesting = m_scope ? m_scope->nesting + 1 : 0;
        m_scope = &scope;

        const bool grouped = isGrouped(s);
        Fragment from;
        Fragment where;
        if (s.from)
            from = emitFrom(*s.from);
        if (s.where)
            where = asCondition(emitTree(*s.where), Strength::Or);

        scope.grouping = Scope::Collecting;
        std::vector<Fragment> groups;
        for (const ExpressionPtr &e : s.groups) {
            if (e->kind == Expression::Integer)
                fail(e->place, QStringLiteral("Grouped by a number"));
            groups.push_back(term(*e, emitTree(*e)));
        }
        scope.grouping = grouped ? Scope::Checked : Scope::Free;
        scope.aggregates = Scope::Aggregates;

        std::vector<Fragment> fields = emitFields(s, inner);
        if (targets && targets->size() != fields.size())
            fail(s.place, QStringLiteral("As many values as columns are needed"));
        Fragment all = asPlain(s.distinct ? "SELECT DISTINCT " : "SELECT ");
        if (!fields.empty()) {
            all.type = fields[0].type;
            all.width = fields[0].width;
        }
        const bool united = m_united && inner == Inner::No;
        constexpr int ClauseDepth = 12;
        for (size_t i = 0; i < fields.size(); ++i) {
            Fragment f = targets ? assigned(*(*targets)[i], fields[i], s.place)
                                 : shown(fields[i], s.distinct || united, inner);
            append(all, i > 0 ? ", " : "", f, ClauseDepth);
        }
        if (inner == Inner::No && m_withKeys && !targets && !grouped && !s.distinct)
            appendKeys(all, fields.size());
        if (s.from)
            append(all, " FROM ", from, 4);
        if (s.where)
            append(all, " WHERE ", where, ClauseDepth);
        for (size_t i = 0; i < groups.size(); ++i)
            append(all, i > 0 ? ", " : " GROUP BY ", groups[i], ClauseDepth);
        if (s.having) {
            const Fragment having = asCondition(emitTree(*s.having), Strength::Or);
            append(all, " HAVING ", having, ClauseDepth);
        }
        if (!united)
            emitOrder(s, fields,
                      !grouped && !s.distinct && isOrdered(s, targets || inner == Inner::No), all);
        if (s.top)
            all.sql += " LIMIT " + std::to_string(*s.top);

        m_scope = scope.outer;
        return all;
    }

    // A term of GROUP BY or ORDER BY.
    Fragment term(const Expression &e, const Fragment &f) const
    {
        if (f.reach < m_scope->nesting)
            fail(e.place, QStringLiteral("An inner query has its order and groups for itself"));
        const Fragment v = asValue(f);
        if (isTextual(v.type))
            return collated(v);
        // A constant number would mean the position of a field.
        const bool begins =
            std::string_view("-0123456789").find(v.sql[0]) != std::string_view::npos;
        const Fragment number = begins ? at(Strength::Multiply, v) : v;
        return begins ? build("0 + $1", Strength::Add, {&number}, v.type) : v;
    }

    std::vector<Fragment> emitFields(const Select &s, Inner inner)
    {
        std::vector<Fragment> fields;
        std::vector<OutputColumn> columns;
        const auto add = [&](const Fragment &f, const std::string &alias, int place) {
            if (fields.size() == MaxColumns)
                fail(place, QStringLiteral("Too many columns"));
            fields.push_back(f);
            if (inner != Inner::No)
                return;
            OutputColumn c;
            c.type = f.type;
            c.width = f.width;
            if (f.column) {
                c.name = c.column = f.column->name;
                c.table = m_scope->sources.at(f.source).alias;
            } else {
                c.name = "Expr" + std::to_string(999 + fields.size());
            }
            if (!alias.empty())
                c.name = alias;
            columns.push_back(std::move(c));
        };
        for (const Field &field : s.fields) {
            if (field.all) {
                addAllColumns(field, add);
                continue;
            }
            Fragment f = emitTree(*field.value);
            if (!field.alias.empty())
                m_scope->aliases.emplace(fold(field.alias), f);
            add(f, field.alias, field.place);
        }
        if (inner == Inner::OneColumn && fields.size() != 1)
            fail(s.place, QStringLiteral("A query within another gives one column"));
        if (inner == Inner::No)
            m_out.columns = std::move(columns);
        return fields;
    }

    template <typename Add>
    void addAllColumns(const Field &field, Add add)
    {
        Scope &scope = *m_scope;
        if (scope.grouping == Scope::Checked)
            fail(field.place, QStringLiteral("All columns cannot stand beside a total"));
        bool found = false;
        for (size_t i = 0; i < scope.sources.size(); ++i) {
            if (!field.table.empty() && fold(scope.sources[i].alias) != fold(field.table))
                continue;
            found = true;
            for (const Column &c : scope.sources[i].table->columns)
                add(columnOf(scope, i, c), {}, field.place);
        }
        if (!found)
            failColumn(field.table.empty() ? "*" : field.table, field.place);
    }

    // A field of the result. If rows are compared with each other, text gets the collation.
    Fragment shown(const Fragment &f, bool compared, Inner inner) const
    {
        if (f.rawMemo && !compared && inner == Inner::No)
            return f;
        const Fragment v = asValue(f);
        return compared && isTextual(v.type) ? collated(v) : v;
    }

    static std::string keyOf(const Scope::Source &source)
    {
        return quoted(source.alias, '"') + '.' + quoted(source.table->key, '"');
    }

    void appendKeys(Fragment &all, size_t columns)
    {
        for (const Scope::Source &source : m_scope->sources) {
            all.sql += (columns > 0 ? ", " : "") + keyOf(source);
            m_out.fuentes.push_back({source.table->name, source.alias, int(columns++)});
        }
    }

    void emitOrder(const Select &s, const std::vector<Fragment> &fields, bool inOrderOfEntry,
                   Fragment &all)
    {
        constexpr int Depth = 14;
        std::string_view separator = " ORDER BY ";
        for (const Order &o : s.order) {
            append(all, separator, term(*o.value, ordered(*o.value, fields)), Depth);
            all.sql += o.descending ? " DESC" : "";
            separator = ", ";
        }
        // Unordered rows, and those equal in the given order, come in the order of their entry.
        if (!inOrderOfEntry)
            return;
        const bool searched = s.from->kind == From::Table && s.where && holdsRange(*s.where);
        for (const Scope::Source &source : m_scope->sources) {
            all.sql += separator;
            // As an expression, so that the engine does not prefer it to a useful index.
            all.sql += searched ? "+" : "";
            all.sql += keyOf(source);
            separator = ", ";
        }
    }

    Fragment ordered(const Expression &e, const std::vector<Fragment> &fields)
    {
        if (e.kind == Expression::Integer) {
            if (e.integer < 1 || size_t(e.integer) > fields.size())
                fail(e.place, QStringLiteral("No field of that number"));
            return fields[size_t(e.integer - 1)];
        }
        if (e.kind == Expression::Column && e.table.empty()) {
            const auto alias = m_scope->aliases.find(fold(e.text));
            if (alias != m_scope->aliases.end())
                return alias->second;
        }
        return emitTree(e);
    }

    // --- Changes ---

    // A value written to a column. Known values pass the column's gate here, bound ones when they
    // are bound, and computed ones in the engine.
    Fragment assigned(const Column &column, const Expression &e)
    {
        if (const auto known = knownValue(e)) {
            const Fragment f =
                literal(converted(e.place, [&] { return toColumn(*known, column); }), column.type);
            return asStored(column, f);
        }
        if (e.kind == Expression::Given) {
            m_out.parameters[size_t(e.integer)].target = column;
            return asStored(column, emitTree(e));
        }
        const bool day = column.type == ColumnType::Date && isOpenSum(e);
        return assigned(column, emitTree(e, day ? ColumnType::Date : ColumnType::None), e.place);
    }

    static std::optional<Value> knownValue(const Expression &e)
    {
        switch (e.kind) {
        case Expression::Null:
            return Value();
        case Expression::Integer:
            return Value(e.integer);
        case Expression::Logical:
            return Value(e.integer != 0);
        case Expression::Decimal:
            return Value(e.number);
        case Expression::Text:
        case Expression::Moment:
            return textOf(e);
        case Expression::Negate:
            if (e.parts[0]->kind == Expression::Integer)
                return Value(-e.parts[0]->integer);
            if (e.parts[0]->kind == Expression::Decimal)
                return Value(-e.parts[0]->number);
            return std::nullopt;
        default:
            return std::nullopt;
        }
    }

    // A MEMO column would convert some text to numbers.
    static Fragment asStored(const Column &column, const Fragment &f)
    {
        return column.type == ColumnType::Memo ? build("jet_memo($1)", Strength::Whole, {&f}) : f;
    }

    // The same for a column, or what the engine computes.
    Fragment assigned(const Column &column, const Fragment &f, int place) const
    {
        if (f.literal == Fragment::NullLiteral && column.type != ColumnType::YesNo)
            return f;
        if (column.type == ColumnType::Memo)
            return asStored(column, f.rawMemo ? f : asValue(f));
        const Fragment v = asValue(f);
        if (fitsAsItIs(column, f, v))
            return v;
        if (column.type == ColumnType::Currency && (isWhole(v.type) || isFloating(v.type)))
            return build("jet_moneda($1)", Strength::Whole, {&v}, ColumnType::Currency);
        const bool numbers = isWhole(v.type) || isFloating(v.type);
        if (isMoment(column.type) ? numbers : isMoment(v.type) && !isTextual(column.type))
            FailMoment(place);
        const Fragment name = asPlain(quoted(column.name, '\''));
        const Fragment type = asPlain(std::to_string(int(column.type)));
        const Fragment width = asPlain(std::to_string(column.width));
        return build("jet_column($1, $2, $3, $4)", Strength::Whole, {&v, &name, &type, &width},
                     column.type);
    }

    // Whether the column accepts every value that the expression can have.
    static bool fitsAsItIs(const Column &column, const Fragment &f, const Fragment &v)
    {
        const auto size = [](ColumnType t) {
            return t == ColumnType::Byte ? 1 : t == ColumnType::Smallint ? 2 : 3;
        };
        switch (column.type) {
        case ColumnType::Byte:
        case ColumnType::Smallint:
        case ColumnType::Long:
        case ColumnType::Counter:
            return f.column && isWhole(v.type) && v.type != ColumnType::YesNo
                   && size(v.type) <= size(column.type);
        case ColumnType::Text:
            return isTextual(v.type) && f.column && v.width > 0 && v.width <= column.width;
        case ColumnType::Single:
            return v.type == ColumnType::Single || isWhole(v.type);
        case ColumnType::Double:
            return isWhole(v.type) || isFloating(v.type);
        case ColumnType::YesNo:
            return f.column && v.type == ColumnType::YesNo;
        default:
            return v.type == column.type;
        }
    }

    // Opens the scope of a change, whose names can only mean columns of the table it writes.
    void openTable(const Name &name, Scope &scope)
    {
        const Table &table = findTable(name.text, name.place);
        scope.sources.push_back({&table, table.name});
        scope.last = 1;
        m_scope = &scope;
        m_out.writtenTable = table.name;
    }

    Fragment emitInsert(const Insert &s)
    {
        const Table &table = findTable(s.table.text, s.table.place);
        m_out.writtenTable = table.name;
        Fragment all = asPlain("INSERT INTO " + qualifiedTable(table) + " (");
        std::vector<const Column *> columns;
        for (const Name &name : s.columns) {
            const Column &c = findColumn(table, name);
            checkNew(columns, c, name);
            all.sql += (columns.size() > 1 ? ", " : "") + quoted(c.name, '"');
        }
        constexpr int Depth = 12;
        if (s.select) {
            append(all, ") ", emitSelect(*s.select, Inner::Any, &columns), Depth);
            return all;
        }
        all.sql += ") VALUES (";
        for (size_t i = 0; i < columns.size(); ++i)
            append(all, i > 0 ? ", " : "", assigned(*columns[i], *s.values[i]), Depth);
        all.sql += ")";
        return all;
    }

    void checkNew(std::vector<const Column *> &columns, const Column &c, const Name &name) const
    {
        if (std::ranges::find(columns, &c) != columns.end())
            fail(name.place, QStringLiteral("The column stands twice"));
        columns.push_back(&c);
    }

    Fragment emitUpdate(const Update &s)
    {
        Scope scope;
        openTable(s.table, scope);
        const Table &table = *scope.sources[0].table;
        Fragment all = asPlain("UPDATE " + qualifiedTable(table) + " SET ");
        std::vector<const Column *> columns;
        constexpr int Depth = 10;
        for (const Assignment &a : s.assignments) {
            const Column &c = findColumn(table, a.column);
            checkNew(columns, c, a.column);
            all.sql += (columns.size() > 1 ? ", " : "") + quoted(c.name, '"');
            append(all, " = ", assigned(c, *a.value), Depth);
        }
        appendWhere(all, s.where);
        m_scope = nullptr;
        return all;
    }

    Fragment emitDelete(const Delete &s)
    {
        Scope scope;
        openTable(s.table, scope);
        Fragment all = asPlain("DELETE FROM " + qualifiedTable(*scope.sources[0].table));
        appendWhere(all, s.where);
        m_scope = nullptr;
        return all;
    }

    void appendWhere(Fragment &all, const ExpressionPtr &where)
    {
        if (where)
            append(all, " WHERE ", asCondition(emitTree(*where), Strength::Or), 12);
    }

    std::string_view m_sql;
    const Catalogue &m_catalog;
    std::string_view m_schema;
    bool m_withKeys;
    bool m_united = false;
    Scope *m_scope = nullptr;
    Translation m_out;
};
} // namespace

Translation translate(std::string_view sql, const Catalogue &catalogue, std::string_view schema,
                      bool withKeys)
{
    try {
        return Emitter(sql, catalogue, schema, withKeys).translate();
    } catch (const TooLong &) {
        refuse(sql, 0, QStringLiteral("The statement is too long"));
    }
}

} // namespace sqlcipher
