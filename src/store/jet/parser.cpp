#include "store/jet/parser.h"

#include "store/column_value.h"
#include "store/jet/lexer.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <utility>

using namespace store;

namespace jet
{
namespace
{
// Limits far above what the program's statements need, so that recursion over the tree cannot
// overflow the stack.
constexpr int MaxNesting = 50;
constexpr int MaxHeight = 250;
constexpr int MaxGiven = 900;
constexpr size_t MaxList = 1000;

// Operator precedence, loosest first. NOT binds tighter than AND, but looser than comparisons.
constexpr int OrLevel = 1;
constexpr int AndLevel = 2;
constexpr int NotLevel = 3;
constexpr int ComparisonLevel = 4;
constexpr int ConcatenateLevel = 5;

struct OperatorWord {
    const char *word;
    Op op;
    int level;
};
constexpr std::array Operators{
    OperatorWord{"OR", Op::Or, OrLevel},
    OperatorWord{"AND", Op::And, AndLevel},
    OperatorWord{"=", Op::Equal, ComparisonLevel},
    OperatorWord{"<>", Op::NotEqual, ComparisonLevel},
    OperatorWord{"<", Op::Less, ComparisonLevel},
    OperatorWord{"<=", Op::LessEqual, ComparisonLevel},
    OperatorWord{">", Op::Greater, ComparisonLevel},
    OperatorWord{">=", Op::GreaterEqual, ComparisonLevel},
    OperatorWord{"LIKE", Op::Like, ComparisonLevel},
    OperatorWord{"&", Op::Concatenate, ConcatenateLevel},
    OperatorWord{"+", Op::Add, 6},
    OperatorWord{"-", Op::Subtract, 6},
    OperatorWord{"MOD", Op::Modulo, 7},
    OperatorWord{"\\", Op::IntegerDivide, 8},
    OperatorWord{"*", Op::Multiply, 9},
    OperatorWord{"/", Op::Divide, 9},
};

struct TypeWord {
    const char *word;
    ColumnType type;
};
constexpr std::array Types{
    TypeWord{"COUNTER", ColumnType::Counter}, TypeWord{"AUTOINCREMENT", ColumnType::Counter},
    TypeWord{"BYTE", ColumnType::Byte},       TypeWord{"SMALLINT", ColumnType::Smallint},
    TypeWord{"SHORT", ColumnType::Smallint},  TypeWord{"INTEGER", ColumnType::Long},
    TypeWord{"LONG", ColumnType::Long},       TypeWord{"SINGLE", ColumnType::Single},
    TypeWord{"DOUBLE", ColumnType::Double},   TypeWord{"CURRENCY", ColumnType::Currency},
    TypeWord{"MONEY", ColumnType::Currency},  TypeWord{"DATE", ColumnType::Date},
    TypeWord{"DATETIME", ColumnType::Date},   TypeWord{"TIME", ColumnType::Time},
    TypeWord{"YESNO", ColumnType::YesNo},     TypeWord{"BIT", ColumnType::YesNo},
    TypeWord{"TEXT", ColumnType::Text},       TypeWord{"CHAR", ColumnType::Text},
    TypeWord{"MEMO", ColumnType::Memo},       TypeWord{"LONGTEXT", ColumnType::Memo},
};

// Words that end an expression, a table or a field and therefore need brackets as names. Types and
// functions are not among them, since there are columns called int, min and dec.
constexpr std::array Reserved{
    "ALL",      "ALTER", "AND",    "AS",     "BETWEEN", "BY",    "CREATE",  "DELETE",
    "DISTINCT", "DROP",  "EQV",    "EXISTS", "FROM",    "GROUP", "HAVING",  "IMP",
    "IN",       "INNER", "INSERT", "INTO",   "IS",      "JOIN",  "LEFT",    "LIKE",
    "MOD",      "NOT",   "NULL",   "ON",     "OR",      "ORDER", "PERCENT", "RIGHT",
    "SELECT",   "SET",   "UNION",  "UPDATE", "VALUES",  "WHERE", "XOR",
};

char capital(char c) { return c >= 'a' && c <= 'z' ? char(c - 'a' + 'A') : c; }

std::string capitals(std::string_view s)
{
    std::string out(s);
    std::ranges::transform(out, out.begin(), capital);
    return out;
}

bool isWord(const Token &token, std::string_view word)
{
    return token.kind == Token::Name && std::ranges::equal(token.text, word, {}, capital);
}

bool isReserved(const Token &token)
{
    return std::ranges::any_of(Reserved, [&](const char *w) { return isWord(token, w); });
}

class Parser
{
public:
    explicit Parser(std::string_view sql) : m_sql(sql), m_tokens(tokens(sql)) {}

    Statement wholeStatement()
    {
        Statement s;
        if (isWord(here(), "SELECT"))
            s.body = unionOfSelects();
        else if (accept("INSERT"))
            s.body = insertBody();
        else if (accept("UPDATE"))
            s.body = updateBody();
        else if (accept("DELETE"))
            s.body = deleteBody();
        else if (accept("CREATE"))
            s.body = createBody();
        else if (accept("ALTER"))
            s.body = alterBody();
        else if (accept("DROP"))
            s.body = dropBody();
        else
            fail("Not a statement of the dialect");
        expectEnd();
        s.given = m_given;
        return s;
    }

    Condition wholeCondition()
    {
        Condition c;
        c.value = parse();
        expectEnd();
        c.given = m_given;
        return c;
    }

private:
    // Counts the recursion depth of the parser.
    class Deeper
    {
    public:
        explicit Deeper(Parser &p) : m_parser(p)
        {
            if (++m_parser.m_nesting > MaxNesting)
                m_parser.fail("Too deeply nested");
        }
        ~Deeper() { --m_parser.m_nesting; }
        Deeper(const Deeper &) = delete;
        Deeper &operator=(const Deeper &) = delete;

    private:
        Parser &m_parser;
    };

    const Token &here() const { return m_tokens[m_at]; }
    const Token &ahead(size_t n = 1) const
    {
        return m_tokens[std::min(m_at + n, m_tokens.size() - 1)];
    }
    Token take()
    {
        Token t = here();
        if (t.kind != Token::End)
            ++m_at;
        return t;
    }

    [[noreturn]] void fail(const char *reason) const { fail(reason, here().place); }
    [[noreturn]] void fail(const char *reason, int place) const
    {
        refuse(m_sql, place, QString::fromLatin1(reason));
    }
    [[noreturn]] void missing(const char *what) const
    {
        refuse(m_sql, here().place, QStringLiteral("%1 expected").arg(QLatin1String(what)));
    }

    bool isSymbol(const char *s) const { return here().kind == Token::Symbol && here().text == s; }
    // Skips a keyword or symbol if it comes next.
    bool accept(const char *word)
    {
        if (!isSymbol(word) && !isWord(here(), word))
            return false;
        ++m_at;
        return true;
    }
    void expect(const char *word)
    {
        if (!accept(word))
            missing(word);
    }
    void expectEnd()
    {
        if (here().kind != Token::End)
            fail("The statement should end here");
    }

    // A name where nothing else is possible, so that even a reserved word is taken.
    Name anyName(const char *what)
    {
        if (here().kind != Token::Name && here().kind != Token::Bracketed)
            missing(what);
        const Token t = take();
        return {t.text, t.place};
    }
    Name tableName()
    {
        if (isReserved(here()))
            missing("A table");
        return anyName("A table");
    }

    template <typename Item>
    void list(Item item)
    {
        size_t n = 0;
        do {
            if (++n > MaxList)
                fail("The list is too long");
            item();
        } while (accept(","));
    }

    // --- Expressions ---

    static ExpressionPtr node(Expression::Kind kind, int place)
    {
        auto e = std::make_unique<Expression>();
        e->kind = kind;
        e->place = place;
        return e;
    }

    void stand(Expression &e, int height)
    {
        e.height = std::max(e.height, height + 1);
        m_tallest = std::max(m_tallest, e.height);
        if (e.height > MaxHeight)
            fail("Too many operators in one expression", e.place);
    }
    void Add(Expression &e, ExpressionPtr part)
    {
        stand(e, part->height);
        e.parts.push_back(std::move(part));
    }
    void addSelect(Expression &e)
    {
        const int outside = std::exchange(m_tallest, 1);
        e.select = selectBody(true);
        const int inside = std::exchange(m_tallest, outside);
        stand(e, inside);
    }

    ExpressionPtr binary(Op op, int place, ExpressionPtr left, ExpressionPtr right)
    {
        auto e = node(Expression::Binary, place);
        e->op = op;
        Add(*e, std::move(left));
        Add(*e, std::move(right));
        return e;
    }

    const OperatorWord *operatorHere() const
    {
        const auto found = std::ranges::find_if(Operators, [this](const OperatorWord &o) {
            return isSymbol(o.word) || isWord(here(), o.word);
        });
        return found == Operators.end() ? nullptr : &*found;
    }

    // Parses an expression whose operators bind at least as tightly as the level.
    ExpressionPtr parse(int level = OrLevel)
    {
        const Deeper deeper(*this);
        const int place = here().place;
        ExpressionPtr left;
        if (level <= NotLevel && accept("NOT")) {
            left = node(Expression::Not, place);
            Add(*left, parse(NotLevel));
        } else {
            left = unary();
        }
        for (;;) {
            if (level <= ComparisonLevel && startsTest()) {
                left = Test(std::move(left));
                continue;
            }
            const OperatorWord *o = operatorHere();
            if (!o || o->level < level)
                return left;
            const int at = take().place;
            left = binary(o->op, at, std::move(left), parse(o->level + 1));
        }
    }

    bool startsTest() const
    {
        return isWord(here(), "BETWEEN") || isWord(here(), "IN") || isWord(here(), "IS")
               || (isWord(here(), "NOT")
                   && (isWord(ahead(), "LIKE") || isWord(ahead(), "BETWEEN")
                       || isWord(ahead(), "IN")));
    }

    // [NOT] BETWEEN, [NOT] IN, IS [NOT] NULL, NOT LIKE
    ExpressionPtr Test(ExpressionPtr left)
    {
        const int place = here().place;
        const bool negated = accept("NOT");
        ExpressionPtr e;
        if (accept("LIKE")) {
            e = binary(Op::Like, place, std::move(left), parse(ConcatenateLevel));
        } else if (accept("BETWEEN")) {
            e = node(Expression::Between, place);
            Add(*e, std::move(left));
            Add(*e, parse(ConcatenateLevel));
            expect("AND");
            Add(*e, parse(ConcatenateLevel));
        } else if (accept("IN")) {
            e = node(Expression::In, place);
            Add(*e, std::move(left));
            expect("(");
            if (isWord(here(), "SELECT"))
                addSelect(*e);
            else
                list([&] { Add(*e, parse()); });
            expect(")");
        } else {
            expect("IS");
            e = node(Expression::IsNull, place);
            e->negated = accept("NOT");
            expect("NULL");
            Add(*e, std::move(left));
            return e;
        }
        e->negated = negated;
        return e;
    }

    ExpressionPtr unary()
    {
        const Deeper deeper(*this);
        const int place = here().place;
        if (accept("+"))
            return unary();
        if (!accept("-"))
            return primary();
        auto e = node(Expression::Negate, place);
        Add(*e, unary());
        return e;
    }

    ExpressionPtr primary()
    {
        const int place = here().place;
        switch (here().kind) {
        case Token::Text: {
            auto e = node(Expression::Text, place);
            e->text = take().text;
            return e;
        }
        case Token::Moment: {
            auto e = node(Expression::Moment, place);
            e->text = take().text;
            e->type = e->text.find('-') == e->text.npos ? ColumnType::Time : ColumnType::Date;
            return e;
        }
        case Token::Integer:
        case Token::Decimal:
            return Number();
        case Token::Given: {
            if (m_given == MaxGiven)
                fail("Too many values");
            auto e = node(Expression::Given, place);
            e->integer = m_given++;
            ++m_at;
            return e;
        }
        case Token::Name:
        case Token::Bracketed:
            return nameOrCall();
        default:
            break;
        }
        if (!accept("("))
            missing("An expression");
        ExpressionPtr e;
        if (isWord(here(), "SELECT")) {
            e = node(Expression::Subselect, place);
            addSelect(*e);
        } else {
            e = parse();
        }
        expect(")");
        return e;
    }

    ExpressionPtr Number()
    {
        const Token t = take();
        auto e = node(Expression::Integer, t.place);
        const char *end = t.text.data() + t.text.size();
        if (t.kind == Token::Integer
            && std::from_chars(t.text.data(), end, e->integer).ec == std::errc())
            return e;
        e->kind = Expression::Decimal;
        e->text = t.text;
        if (std::from_chars(t.text.data(), end, e->number).ec != std::errc()
            || !std::isfinite(e->number))
            fail("The number is out of range", t.place);
        if (t.kind == Token::Integer)
            e->text += ".0";
        return e;
    }

    ExpressionPtr nameOrCall()
    {
        const Token t = here();
        const bool callFollows = ahead().kind == Token::Symbol && ahead().text == "(";
        if (t.kind == Token::Name) {
            if (isWord(t, "EXISTS")) {
                ++m_at;
                expect("(");
                auto e = node(Expression::Exists, t.place);
                addSelect(*e);
                expect(")");
                return e;
            }
            if (callFollows && (!isReserved(t) || isWord(t, "LEFT") || isWord(t, "RIGHT")))
                return call();
            if (isWord(t, "NULL")) {
                ++m_at;
                return node(Expression::Null, t.place);
            }
            const bool yes = isWord(t, "TRUE") || isWord(t, "YES");
            if (yes || isWord(t, "FALSE") || isWord(t, "NO")) {
                ++m_at;
                auto e = node(Expression::Logical, t.place);
                e->integer = yes ? -1 : 0;
                return e;
            }
            if (isReserved(t))
                missing("An expression");
        }
        auto e = node(Expression::Column, t.place);
        e->text = take().text;
        if (accept(".")) {
            e->table = e->text;
            e->text = anyName("A column").text;
        }
        return e;
    }

    ExpressionPtr call()
    {
        const Token t = take();
        auto e = node(Expression::Call, t.place);
        e->text = capitals(t.text);
        expect("(");
        if (e->text == "COUNT" && accept("*"))
            e->star = true;
        else if (!isSymbol(")"))
            list([&] { Add(*e, parse()); });
        expect(")");
        return e;
    }

    // --- Queries ---

    std::unique_ptr<Select> unionOfSelects()
    {
        auto first = selectBody(false);
        Select *last = first.get();
        for (int n = 0; accept("UNION"); ++n) {
            if (n == MaxNesting)
                fail("Too many queries in one");
            if (last->top || !last->order.empty())
                fail("TOP and ORDER BY stand behind the last query of a UNION", last->place);
            last->keepsDuplicates = accept("ALL");
            if (!isWord(here(), "SELECT"))
                missing("SELECT");
            last->united = selectBody(false);
            last = last->united.get();
        }
        if (last != first.get()) {
            if (last->top)
                fail("TOP within a UNION", last->place);
            first->order = std::move(last->order);
            last->order.clear();
        }
        return first;
    }

    std::unique_ptr<Select> selectBody(bool inside)
    {
        const Deeper deeper(*this);
        auto s = std::make_unique<Select>();
        s->place = here().place;
        expect("SELECT");
        s->distinct = accept("DISTINCT");
        if (isWord(here(), "TOP") && ahead().kind == Token::Integer) {
            ++m_at;
            s->top = smallNumber(std::numeric_limits<int>::max());
            if (isWord(here(), "PERCENT"))
                fail("TOP ... PERCENT is not taken");
        }
        list([&] { s->fields.push_back(fieldEntry()); });
        if (accept("FROM")) {
            s->from = Tables();
            if (accept("WHERE"))
                s->where = parse();
            if (accept("GROUP")) {
                expect("BY");
                list([&] { s->groups.push_back(parse()); });
                if (accept("HAVING"))
                    s->having = parse();
            }
            if (accept("ORDER")) {
                expect("BY");
                list([&] { s->order.push_back(orderEntry()); });
            }
        }
        if (inside && isWord(here(), "UNION"))
            fail("A UNION within another query");
        return s;
    }

    Field fieldEntry()
    {
        Field f;
        f.place = here().place;
        if (accept("*")) {
            f.all = true;
            return f;
        }
        if (ahead().kind == Token::Symbol && ahead().text == "." && ahead(2).kind == Token::Symbol
            && ahead(2).text == "*") {
            f.all = true;
            f.table = tableName().text;
            m_at += 2;
            return f;
        }
        f.value = parse();
        if (accept("AS"))
            f.alias = anyName("A name").text;
        return f;
    }

    Order orderEntry()
    {
        Order o;
        o.value = parse();
        o.descending = accept("DESC");
        if (!o.descending)
            accept("ASC");
        return o;
    }

    std::unique_ptr<From> joinPieces(From::Kind kind, int place, std::unique_ptr<From> left,
                                     std::unique_ptr<From> right)
    {
        // Chains of joins are walked recursively, and the engine joins at most 64 tables.
        if (++m_joins > MaxNesting)
            fail("Too many tables", place);
        auto join = std::make_unique<From>();
        join->kind = kind;
        join->place = place;
        join->left = std::move(left);
        join->right = std::move(right);
        return join;
    }

    std::unique_ptr<From> Tables()
    {
        auto left = joinedTables();
        while (isSymbol(",")) {
            const int place = take().place;
            left = joinPieces(From::Cross, place, std::move(left), joinedTables());
        }
        return left;
    }

    std::unique_ptr<From> joinedTables()
    {
        auto left = oneTable();
        for (;;) {
            const int place = here().place;
            From::Kind kind = From::Inner;
            if (accept("LEFT"))
                kind = From::Left, accept("OUTER");
            else if (accept("RIGHT"))
                kind = From::Right, accept("OUTER");
            else if (!accept("INNER") && !isWord(here(), "JOIN"))
                return left;
            expect("JOIN");
            left = joinPieces(kind, place, std::move(left), oneTable());
            expect("ON");
            left->on = parse();
        }
    }

    std::unique_ptr<From> oneTable()
    {
        const Deeper deeper(*this);
        if (accept("(")) {
            if (isWord(here(), "SELECT"))
                fail("A query in the place of a table");
            auto inner = joinedTables();
            expect(")");
            return inner;
        }
        const Name name = tableName();
        auto from = std::make_unique<From>();
        from->place = name.place;
        from->table = name.text;
        if (accept("AS"))
            from->alias = anyName("A name").text;
        else if (here().kind == Token::Bracketed
                 || (here().kind == Token::Name && !isReserved(here())))
            from->alias = take().text;
        return from;
    }

    // --- Changes ---

    Insert insertBody()
    {
        Insert s;
        expect("INTO");
        s.table = tableName();
        if (!isSymbol("("))
            missing("The list of columns");
        ++m_at;
        list([&] { s.columns.push_back(anyName("A column")); });
        expect(")");
        const int place = here().place;
        size_t values = 0;
        if (isWord(here(), "SELECT")) {
            s.select = selectBody(true);
            return s;
        }
        if (!accept("VALUES"))
            missing("VALUES");
        expect("(");
        list([&] {
            s.values.push_back(parse());
            ++values;
        });
        expect(")");
        if (values != s.columns.size())
            fail("As many values as columns are needed", place);
        return s;
    }

    Update updateBody()
    {
        Update s;
        s.table = tableName();
        expect("SET");
        list([&] {
            Assignment a;
            a.column = anyName("A column");
            if (accept(".")) {
                if (capitals(a.column.text) != capitals(s.table.text))
                    fail("A column of another table", a.column.place);
                a.column = anyName("A column");
            }
            expect("=");
            a.value = parse();
            s.assignments.push_back(std::move(a));
        });
        if (accept("WHERE"))
            s.where = parse();
        return s;
    }

    Delete deleteBody()
    {
        Delete s;
        Name qualifier;
        if (!accept("*") && !isWord(here(), "FROM")) {
            qualifier = tableName();
            expect(".");
            expect("*");
        }
        expect("FROM");
        s.table = tableName();
        if (!qualifier.text.empty() && capitals(qualifier.text) != capitals(s.table.text))
            fail("Rows of another table", qualifier.place);
        if (accept("WHERE"))
            s.where = parse();
        return s;
    }

    // --- Definitions ---

    Definition createBody()
    {
        Definition d;
        d.unique = accept("UNIQUE");
        if (d.unique || isWord(here(), "INDEX"))
            return indexBody(std::move(d));
        d.kind = Definition::CreateTable;
        expect("TABLE");
        d.table = tableName().text;
        expect("(");
        list([&] { d.columns.push_back(columnEntry()); });
        expect(")");
        return d;
    }

    Definition indexBody(Definition d)
    {
        d.kind = Definition::CreateIndex;
        expect("INDEX");
        d.index = anyName("An index").text;
        expect("ON");
        d.table = tableName().text;
        expect("(");
        list([&] { d.columns.push_back(named(anyName("A column").text)); });
        expect(")");
        return d;
    }

    static NewColumn named(std::string name)
    {
        NewColumn c;
        c.name = std::move(name);
        return c;
    }

    Definition alterBody()
    {
        Definition d;
        expect("TABLE");
        d.table = tableName().text;
        if (accept("DROP")) {
            d.kind = Definition::RemoveColumn;
            accept("COLUMN");
            list([&] { d.columns.push_back(named(anyName("A column").text)); });
            return d;
        }
        d.kind = Definition::ChangeColumn;
        if (accept("ADD"))
            d.kind = Definition::AddColumn;
        else if (!accept("ALTER"))
            missing("ADD, ALTER or DROP");
        accept("COLUMN");
        if (d.kind == Definition::AddColumn)
            list([&] { d.columns.push_back(columnEntry()); });
        else
            d.columns.push_back(columnEntry());
        return d;
    }

    Definition dropBody()
    {
        Definition d;
        if (accept("INDEX")) {
            d.kind = Definition::RemoveIndex;
            d.index = anyName("An index").text;
            expect("ON");
            d.table = tableName().text;
            return d;
        }
        d.kind = Definition::RemoveTable;
        expect("TABLE");
        d.table = tableName().text;
        return d;
    }

    NewColumn columnEntry()
    {
        NewColumn c = columnAndType();
        for (;;) {
            if (accept("NOT")) {
                expect("NULL");
                c.notNull = true;
            } else if (accept("DEFAULT")) {
                c.byDefault = defaultOf(c);
            } else {
                return c;
            }
        }
    }

    Value defaultOf(const Column &column)
    {
        const bool negative = accept("-");
        const Token &t = here();
        Value v;
        switch (t.kind) {
        case Token::Integer:
        case Token::Decimal: {
            const double x = QString::fromStdString(t.text).toDouble();
            v = Value(negative ? -x : x);
            break;
        }
        case Token::Text:
        case Token::Moment:
            v = Value(QString::fromStdString(t.text));
            break;
        default:
            if (isWord(t, "TRUE") || isWord(t, "YES"))
                v = Value(true);
            else if (isWord(t, "FALSE") || isWord(t, "NO"))
                v = Value(false);
            else if (!isWord(t, "NULL"))
                missing("A default");
        }
        ++m_at;
        return toColumn(v, column);
    }

    NewColumn columnAndType()
    {
        constexpr int WidestText = 255;
        NewColumn c;
        c.name = anyName("A column").text;
        const auto type = std::ranges::find_if(
            Types, [this](const TypeWord &t) { return isWord(here(), t.word); });
        if (type == Types.end())
            missing("A column type");
        ++m_at;
        c.type = type->type;
        if (c.type != ColumnType::Text)
            return c;
        c.width = WidestText;
        if (accept("(")) {
            c.width = smallNumber(WidestText);
            if (c.width == 0)
                fail("A width of 1 to 255 is needed");
            expect(")");
        }
        return c;
    }

    int smallNumber(int most)
    {
        if (here().kind != Token::Integer)
            missing("A number");
        int n = 0;
        const std::string &digits = here().text;
        const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), n);
        if (read.ec != std::errc() || n > most)
            fail("The number is out of range");
        ++m_at;
        return n;
    }

    std::string_view m_sql;
    std::vector<Token> m_tokens;
    size_t m_at = 0;
    int m_given = 0;
    int m_nesting = 0;
    int m_joins = 0;
    int m_tallest = 1; // tallest expression of the query being read
};
} // namespace

Statement parseStatement(std::string_view sql) { return Parser(sql).wholeStatement(); }

Condition parseCondition(std::string_view text) { return Parser(text).wholeCondition(); }

} // namespace jet
