#include "store/jet/parser.h"

#include "store/jet/lexer.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <utility>

namespace jet
{
namespace
{
// Limits that no statement of ours comes near, and that keep every walk over the tree off the end
// of the stack.
constexpr int MaxNesting = 50;
constexpr int MaxHeight = 250;
constexpr int MaxGiven = 900;
constexpr size_t MaxList = 1000;

// How tightly operators bind; NOT stands between AND and the comparisons.
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
    Tipo tipo;
};
constexpr std::array Types{
    TypeWord{"COUNTER", Tipo::Counter}, TypeWord{"AUTOINCREMENT", Tipo::Counter},
    TypeWord{"BYTE", Tipo::Byte},       TypeWord{"SMALLINT", Tipo::Smallint},
    TypeWord{"SHORT", Tipo::Smallint},  TypeWord{"INTEGER", Tipo::Long},
    TypeWord{"LONG", Tipo::Long},       TypeWord{"SINGLE", Tipo::Single},
    TypeWord{"DOUBLE", Tipo::Double},   TypeWord{"CURRENCY", Tipo::Currency},
    TypeWord{"MONEY", Tipo::Currency},  TypeWord{"DATE", Tipo::Date},
    TypeWord{"DATETIME", Tipo::Date},   TypeWord{"TIME", Tipo::Time},
    TypeWord{"YESNO", Tipo::YesNo},     TypeWord{"BIT", Tipo::YesNo},
    TypeWord{"TEXT", Tipo::Text},       TypeWord{"CHAR", Tipo::Text},
    TypeWord{"MEMO", Tipo::Memo},       TypeWord{"LONGTEXT", Tipo::Memo},
};

// Words that end an expression, a table or a field, so that they cannot be a name without
// brackets there. Types and functions are no such words: columns are called int, min and dec.
constexpr std::array Reserved{
    "ALL",      "ALTER", "AND",    "AS",     "BETWEEN", "BY",    "CREATE",  "DELETE",
    "DISTINCT", "DROP",  "EQV",    "EXISTS", "FROM",    "GROUP", "HAVING",  "IMP",
    "IN",       "INNER", "INSERT", "INTO",   "IS",      "JOIN",  "LEFT",    "LIKE",
    "MOD",      "NOT",   "NULL",   "ON",     "OR",      "ORDER", "PERCENT", "RIGHT",
    "SELECT",   "SET",   "UNION",  "UPDATE", "VALUES",  "WHERE", "XOR",
};

char Capital(char c) { return c >= 'a' && c <= 'z' ? char(c - 'a' + 'A') : c; }

std::string Capitals(std::string_view s)
{
    std::string out(s);
    std::ranges::transform(out, out.begin(), Capital);
    return out;
}

bool IsWord(const Token &token, std::string_view word)
{
    return token.kind == Token::Name && std::ranges::equal(token.text, word, {}, Capital);
}

bool IsReserved(const Token &token)
{
    return std::ranges::any_of(Reserved, [&](const char *w) { return IsWord(token, w); });
}

class Parser
{
public:
    explicit Parser(std::string_view sql) : m_sql(sql), m_tokens(Tokens(sql)) {}

    Statement WholeStatement()
    {
        Statement s;
        if (IsWord(Here(), "SELECT"))
            s.body = UnionOfSelects();
        else if (Accept("INSERT"))
            s.body = InsertBody();
        else if (Accept("UPDATE"))
            s.body = UpdateBody();
        else if (Accept("DELETE"))
            s.body = DeleteBody();
        else if (Accept("CREATE"))
            s.body = CreateBody();
        else if (Accept("ALTER"))
            s.body = AlterBody();
        else if (Accept("DROP"))
            s.body = DropBody();
        else
            Fail("Not a statement of the dialect");
        ExpectEnd();
        s.given = m_given;
        return s;
    }

    Condition WholeCondition()
    {
        Condition c;
        c.value = Parse();
        ExpectEnd();
        c.given = m_given;
        return c;
    }

private:
    // Counts how deep the parser stands in itself.
    class Deeper
    {
    public:
        explicit Deeper(Parser &p) : m_parser(p)
        {
            if (++m_parser.m_nesting > MaxNesting)
                m_parser.Fail("Too deeply nested");
        }
        ~Deeper() { --m_parser.m_nesting; }
        Deeper(const Deeper &) = delete;
        Deeper &operator=(const Deeper &) = delete;

    private:
        Parser &m_parser;
    };

    const Token &Here() const { return m_tokens[m_at]; }
    const Token &Ahead(size_t n = 1) const
    {
        return m_tokens[std::min(m_at + n, m_tokens.size() - 1)];
    }
    Token Take()
    {
        Token t = Here();
        if (t.kind != Token::End)
            ++m_at;
        return t;
    }

    [[noreturn]] void Fail(const char *reason) const { Fail(reason, Here().place); }
    [[noreturn]] void Fail(const char *reason, int place) const
    {
        Refuse(m_sql, place, QString::fromLatin1(reason));
    }
    [[noreturn]] void Missing(const char *what) const
    {
        Refuse(m_sql, Here().place, QStringLiteral("%1 expected").arg(QLatin1String(what)));
    }

    bool IsSymbol(const char *s) const { return Here().kind == Token::Symbol && Here().text == s; }
    // A word of the dialect, or a symbol.
    bool Accept(const char *word)
    {
        if (!IsSymbol(word) && !IsWord(Here(), word))
            return false;
        ++m_at;
        return true;
    }
    void Expect(const char *word)
    {
        if (!Accept(word))
            Missing(word);
    }
    void ExpectEnd()
    {
        if (Here().kind != Token::End)
            Fail("The statement should end here");
    }

    // Where nothing but a name can stand, any word is one.
    Name AnyName(const char *what)
    {
        if (Here().kind != Token::Name && Here().kind != Token::Bracketed)
            Missing(what);
        const Token t = Take();
        return {t.text, t.place};
    }
    Name TableName()
    {
        if (IsReserved(Here()))
            Missing("A table");
        return AnyName("A table");
    }

    template <typename Item>
    void List(Item item)
    {
        size_t n = 0;
        do {
            if (++n > MaxList)
                Fail("The list is too long");
            item();
        } while (Accept(","));
    }

    // Expressions

    static ExpressionPtr Node(Expression::Kind kind, int place)
    {
        auto e = std::make_unique<Expression>();
        e->kind = kind;
        e->place = place;
        return e;
    }

    void Stand(Expression &e, int height)
    {
        e.height = std::max(e.height, height + 1);
        m_tallest = std::max(m_tallest, e.height);
        if (e.height > MaxHeight)
            Fail("Too many operators in one expression", e.place);
    }
    void Add(Expression &e, ExpressionPtr part)
    {
        Stand(e, part->height);
        e.parts.push_back(std::move(part));
    }
    void AddSelect(Expression &e)
    {
        const int outside = std::exchange(m_tallest, 1);
        e.select = SelectBody(true);
        const int inside = std::exchange(m_tallest, outside);
        Stand(e, inside);
    }

    ExpressionPtr Binary(Op op, int place, ExpressionPtr left, ExpressionPtr right)
    {
        auto e = Node(Expression::Binary, place);
        e->op = op;
        Add(*e, std::move(left));
        Add(*e, std::move(right));
        return e;
    }

    const OperatorWord *OperatorHere() const
    {
        const auto found = std::ranges::find_if(Operators, [this](const OperatorWord &o) {
            return IsSymbol(o.word) || IsWord(Here(), o.word);
        });
        return found == Operators.end() ? nullptr : &*found;
    }

    // An expression whose operators bind at least as tightly as the level.
    ExpressionPtr Parse(int level = OrLevel)
    {
        const Deeper deeper(*this);
        const int place = Here().place;
        ExpressionPtr left;
        if (level <= NotLevel && Accept("NOT")) {
            left = Node(Expression::Not, place);
            Add(*left, Parse(NotLevel));
        } else {
            left = Unary();
        }
        for (;;) {
            if (level <= ComparisonLevel && StartsTest()) {
                left = Test(std::move(left));
                continue;
            }
            const OperatorWord *o = OperatorHere();
            if (!o || o->level < level)
                return left;
            const int at = Take().place;
            left = Binary(o->op, at, std::move(left), Parse(o->level + 1));
        }
    }

    bool StartsTest() const
    {
        return IsWord(Here(), "BETWEEN") || IsWord(Here(), "IN") || IsWord(Here(), "IS")
               || (IsWord(Here(), "NOT")
                   && (IsWord(Ahead(), "LIKE") || IsWord(Ahead(), "BETWEEN")
                       || IsWord(Ahead(), "IN")));
    }

    // [NOT] BETWEEN, [NOT] IN, IS [NOT] NULL, NOT LIKE
    ExpressionPtr Test(ExpressionPtr left)
    {
        const int place = Here().place;
        const bool negated = Accept("NOT");
        ExpressionPtr e;
        if (Accept("LIKE")) {
            e = Binary(Op::Like, place, std::move(left), Parse(ConcatenateLevel));
        } else if (Accept("BETWEEN")) {
            e = Node(Expression::Between, place);
            Add(*e, std::move(left));
            Add(*e, Parse(ConcatenateLevel));
            Expect("AND");
            Add(*e, Parse(ConcatenateLevel));
        } else if (Accept("IN")) {
            e = Node(Expression::In, place);
            Add(*e, std::move(left));
            Expect("(");
            if (IsWord(Here(), "SELECT"))
                AddSelect(*e);
            else
                List([&] { Add(*e, Parse()); });
            Expect(")");
        } else {
            Expect("IS");
            e = Node(Expression::IsNull, place);
            e->negated = Accept("NOT");
            Expect("NULL");
            Add(*e, std::move(left));
            return e;
        }
        e->negated = negated;
        return e;
    }

    ExpressionPtr Unary()
    {
        const Deeper deeper(*this);
        const int place = Here().place;
        if (Accept("+"))
            return Unary();
        if (!Accept("-"))
            return Primary();
        auto e = Node(Expression::Negate, place);
        Add(*e, Unary());
        return e;
    }

    ExpressionPtr Primary()
    {
        const int place = Here().place;
        switch (Here().kind) {
        case Token::Text: {
            auto e = Node(Expression::Text, place);
            e->text = Take().text;
            return e;
        }
        case Token::Moment: {
            auto e = Node(Expression::Moment, place);
            e->text = Take().text;
            e->tipo = e->text.find('-') == e->text.npos ? Tipo::Time : Tipo::Date;
            return e;
        }
        case Token::Integer:
        case Token::Decimal:
            return Number();
        case Token::Given: {
            if (m_given == MaxGiven)
                Fail("Too many values");
            auto e = Node(Expression::Given, place);
            e->integer = m_given++;
            ++m_at;
            return e;
        }
        case Token::Name:
        case Token::Bracketed:
            return NameOrCall();
        default:
            break;
        }
        if (!Accept("("))
            Missing("An expression");
        ExpressionPtr e;
        if (IsWord(Here(), "SELECT")) {
            e = Node(Expression::Subselect, place);
            AddSelect(*e);
        } else {
            e = Parse();
        }
        Expect(")");
        return e;
    }

    ExpressionPtr Number()
    {
        const Token t = Take();
        auto e = Node(Expression::Integer, t.place);
        const char *end = t.text.data() + t.text.size();
        if (t.kind == Token::Integer
            && std::from_chars(t.text.data(), end, e->integer).ec == std::errc())
            return e;
        e->kind = Expression::Decimal;
        e->text = t.text;
        if (std::from_chars(t.text.data(), end, e->number).ec != std::errc()
            || !std::isfinite(e->number))
            Fail("The number is out of range", t.place);
        if (t.kind == Token::Integer)
            e->text += ".0";
        return e;
    }

    ExpressionPtr NameOrCall()
    {
        const Token t = Here();
        const bool callFollows = Ahead().kind == Token::Symbol && Ahead().text == "(";
        if (t.kind == Token::Name) {
            if (IsWord(t, "EXISTS")) {
                ++m_at;
                Expect("(");
                auto e = Node(Expression::Exists, t.place);
                AddSelect(*e);
                Expect(")");
                return e;
            }
            if (callFollows && (!IsReserved(t) || IsWord(t, "LEFT") || IsWord(t, "RIGHT")))
                return Call();
            if (IsWord(t, "NULL")) {
                ++m_at;
                return Node(Expression::Null, t.place);
            }
            const bool yes = IsWord(t, "TRUE") || IsWord(t, "YES");
            if (yes || IsWord(t, "FALSE") || IsWord(t, "NO")) {
                ++m_at;
                auto e = Node(Expression::Logical, t.place);
                e->integer = yes ? -1 : 0;
                return e;
            }
            if (IsReserved(t))
                Missing("An expression");
        }
        auto e = Node(Expression::Column, t.place);
        e->text = Take().text;
        if (Accept(".")) {
            e->table = e->text;
            e->text = AnyName("A column").text;
        }
        return e;
    }

    ExpressionPtr Call()
    {
        const Token t = Take();
        auto e = Node(Expression::Call, t.place);
        e->text = Capitals(t.text);
        Expect("(");
        if (e->text == "COUNT" && Accept("*"))
            e->star = true;
        else if (!IsSymbol(")"))
            List([&] { Add(*e, Parse()); });
        Expect(")");
        return e;
    }

    // Queries

    std::unique_ptr<Select> UnionOfSelects()
    {
        auto first = SelectBody(false);
        Select *last = first.get();
        for (int n = 0; Accept("UNION"); ++n) {
            if (n == MaxNesting)
                Fail("Too many queries in one");
            if (last->top || !last->order.empty())
                Fail("TOP and ORDER BY stand behind the last query of a UNION", last->place);
            last->keepsDuplicates = Accept("ALL");
            if (!IsWord(Here(), "SELECT"))
                Missing("SELECT");
            last->united = SelectBody(false);
            last = last->united.get();
        }
        if (last != first.get()) {
            if (last->top)
                Fail("TOP within a UNION", last->place);
            first->order = std::move(last->order);
            last->order.clear();
        }
        return first;
    }

    std::unique_ptr<Select> SelectBody(bool inside)
    {
        const Deeper deeper(*this);
        auto s = std::make_unique<Select>();
        s->place = Here().place;
        Expect("SELECT");
        s->distinct = Accept("DISTINCT");
        if (IsWord(Here(), "TOP") && Ahead().kind == Token::Integer) {
            ++m_at;
            s->top = SmallNumber(std::numeric_limits<int>::max());
            if (IsWord(Here(), "PERCENT"))
                Fail("TOP ... PERCENT is not taken");
        }
        List([&] { s->fields.push_back(FieldEntry()); });
        if (Accept("FROM")) {
            s->from = Tables();
            if (Accept("WHERE"))
                s->where = Parse();
            if (Accept("GROUP")) {
                Expect("BY");
                List([&] { s->groups.push_back(Parse()); });
                if (Accept("HAVING"))
                    s->having = Parse();
            }
            if (Accept("ORDER")) {
                Expect("BY");
                List([&] { s->order.push_back(OrderEntry()); });
            }
        }
        if (inside && IsWord(Here(), "UNION"))
            Fail("A UNION within another query");
        return s;
    }

    Field FieldEntry()
    {
        Field f;
        f.place = Here().place;
        if (Accept("*")) {
            f.all = true;
            return f;
        }
        if (Ahead().kind == Token::Symbol && Ahead().text == "." && Ahead(2).kind == Token::Symbol
            && Ahead(2).text == "*") {
            f.all = true;
            f.table = TableName().text;
            m_at += 2;
            return f;
        }
        f.value = Parse();
        if (Accept("AS"))
            f.alias = AnyName("A name").text;
        return f;
    }

    Order OrderEntry()
    {
        Order o;
        o.value = Parse();
        o.descending = Accept("DESC");
        if (!o.descending)
            Accept("ASC");
        return o;
    }

    std::unique_ptr<From> Join(From::Kind kind, int place, std::unique_ptr<From> left,
                               std::unique_ptr<From> right)
    {
        // Long chains of joins are walked recursively, and the engine joins 64 tables at most.
        if (++m_joins > MaxNesting)
            Fail("Too many tables", place);
        auto join = std::make_unique<From>();
        join->kind = kind;
        join->place = place;
        join->left = std::move(left);
        join->right = std::move(right);
        return join;
    }

    std::unique_ptr<From> Tables()
    {
        auto left = JoinedTables();
        while (IsSymbol(",")) {
            const int place = Take().place;
            left = Join(From::Cross, place, std::move(left), JoinedTables());
        }
        return left;
    }

    std::unique_ptr<From> JoinedTables()
    {
        auto left = OneTable();
        for (;;) {
            const int place = Here().place;
            From::Kind kind = From::Inner;
            if (Accept("LEFT"))
                kind = From::Left, Accept("OUTER");
            else if (Accept("RIGHT"))
                kind = From::Right, Accept("OUTER");
            else if (!Accept("INNER") && !IsWord(Here(), "JOIN"))
                return left;
            Expect("JOIN");
            left = Join(kind, place, std::move(left), OneTable());
            Expect("ON");
            left->on = Parse();
        }
    }

    std::unique_ptr<From> OneTable()
    {
        const Deeper deeper(*this);
        if (Accept("(")) {
            if (IsWord(Here(), "SELECT"))
                Fail("A query in the place of a table");
            auto inner = JoinedTables();
            Expect(")");
            return inner;
        }
        const Name name = TableName();
        auto from = std::make_unique<From>();
        from->place = name.place;
        from->table = name.text;
        if (Accept("AS"))
            from->alias = AnyName("A name").text;
        else if (Here().kind == Token::Bracketed
                 || (Here().kind == Token::Name && !IsReserved(Here())))
            from->alias = Take().text;
        return from;
    }

    // Changes

    Insert InsertBody()
    {
        Insert s;
        Expect("INTO");
        s.table = TableName();
        if (!IsSymbol("("))
            Missing("The list of columns");
        ++m_at;
        List([&] { s.columns.push_back(AnyName("A column")); });
        Expect(")");
        const int place = Here().place;
        size_t values = 0;
        if (IsWord(Here(), "SELECT")) {
            s.select = SelectBody(true);
            return s;
        }
        if (!Accept("VALUES"))
            Missing("VALUES");
        Expect("(");
        List([&] {
            s.values.push_back(Parse());
            ++values;
        });
        Expect(")");
        if (values != s.columns.size())
            Fail("As many values as columns are needed", place);
        return s;
    }

    Update UpdateBody()
    {
        Update s;
        s.table = TableName();
        Expect("SET");
        List([&] {
            Assignment a;
            a.column = AnyName("A column");
            if (Accept(".")) {
                if (Capitals(a.column.text) != Capitals(s.table.text))
                    Fail("A column of another table", a.column.place);
                a.column = AnyName("A column");
            }
            Expect("=");
            a.value = Parse();
            s.assignments.push_back(std::move(a));
        });
        if (Accept("WHERE"))
            s.where = Parse();
        return s;
    }

    Delete DeleteBody()
    {
        Delete s;
        Name qualifier;
        if (!Accept("*") && !IsWord(Here(), "FROM")) {
            qualifier = TableName();
            Expect(".");
            Expect("*");
        }
        Expect("FROM");
        s.table = TableName();
        if (!qualifier.text.empty() && Capitals(qualifier.text) != Capitals(s.table.text))
            Fail("Rows of another table", qualifier.place);
        if (Accept("WHERE"))
            s.where = Parse();
        return s;
    }

    // Definitions

    Definicion CreateBody()
    {
        Definicion d;
        d.clase = Definicion::CrearTabla;
        Expect("TABLE");
        d.tabla = TableName().text;
        Expect("(");
        List([&] { d.columnas.push_back(ColumnEntry()); });
        Expect(")");
        return d;
    }

    Definicion AlterBody()
    {
        Definicion d;
        Expect("TABLE");
        d.tabla = TableName().text;
        if (Accept("DROP")) {
            d.clase = Definicion::QuitarColumna;
            Accept("COLUMN");
            d.columnas.push_back({AnyName("A column").text});
            return d;
        }
        d.clase = Definicion::CambiarColumna;
        if (Accept("ADD"))
            d.clase = Definicion::AgregarColumna;
        else if (!Accept("ALTER"))
            Missing("ADD, ALTER or DROP");
        Accept("COLUMN");
        d.columnas.push_back(ColumnEntry());
        return d;
    }

    Definicion DropBody()
    {
        Definicion d;
        d.clase = Definicion::QuitarTabla;
        Expect("TABLE");
        d.tabla = TableName().text;
        return d;
    }

    Columna ColumnEntry()
    {
        constexpr int WidestText = 255;
        Columna c;
        c.nombre = AnyName("A column").text;
        const auto type = std::ranges::find_if(
            Types, [this](const TypeWord &t) { return IsWord(Here(), t.word); });
        if (type == Types.end())
            Missing("A column type");
        ++m_at;
        c.tipo = type->tipo;
        if (c.tipo != Tipo::Text)
            return c;
        c.ancho = WidestText;
        if (Accept("(")) {
            c.ancho = SmallNumber(WidestText);
            if (c.ancho == 0)
                Fail("A width of 1 to 255 is needed");
            Expect(")");
        }
        return c;
    }

    int SmallNumber(int most)
    {
        if (Here().kind != Token::Integer)
            Missing("A number");
        int n = 0;
        const std::string &digits = Here().text;
        const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), n);
        if (read.ec != std::errc() || n > most)
            Fail("The number is out of range");
        ++m_at;
        return n;
    }

    std::string_view m_sql;
    std::vector<Token> m_tokens;
    size_t m_at = 0;
    int m_given = 0;
    int m_nesting = 0;
    int m_joins = 0;
    int m_tallest = 1; // expression of the query being read
};
} // namespace

Statement ParseStatement(std::string_view sql) { return Parser(sql).WholeStatement(); }

Condition ParseCondition(std::string_view text) { return Parser(text).WholeCondition(); }

void Revisar(std::string_view sql) { ParseStatement(sql); }

} // namespace jet
