// The syntax tree of a statement.
#pragma once

#include "store/jet/translation.h"

#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace jet
{

struct Select;

/// Binary operators.
enum class Op {
    Or,
    And,
    Equal,
    NotEqual,
    Less,
    LessEqual,
    Greater,
    GreaterEqual,
    Like,
    Concatenate,
    Add,
    Subtract,
    Modulo,
    IntegerDivide,
    Multiply,
    Divide,
};

/// A node of an expression. The kind decides which of the fields are used.
struct Expression {
    enum Kind {
        Null,
        Integer,   // integer
        Decimal,   // text, number
        Text,      // text
        Moment,    // text as the files store it, type Date or Time
        Logical,   // integer, 0 or -1
        Given,     // integer: number of the '?', from 0
        Column,    // table (may be empty), text
        Negate,    // parts[0]
        Not,       // parts[0]
        Binary,    // op, parts[0], parts[1], negated for NOT LIKE
        Between,   // parts[0] BETWEEN parts[1] AND parts[2], negated
        In,        // parts[0] IN the other parts, or in select; negated
        IsNull,    // parts[0], negated
        Call,      // text in capitals, parts; star for COUNT(*)
        Exists,    // select
        Subselect, // select
    };
    Kind kind = Null;
    int place = 0;  // offset in the statement, in bytes; likewise in the other structs
    int height = 1; // of the tree, this node included
    std::string text;
    std::string table;
    qint64 integer = 0;
    double number = 0;
    Op op = Op::Or;
    bool negated = false;
    bool star = false;
    store::ColumnType type = store::ColumnType::None;
    std::vector<std::unique_ptr<Expression>> parts;
    std::unique_ptr<Select> select;
};

using ExpressionPtr = std::unique_ptr<Expression>;

/// A name and its place in the statement.
struct Name {
    std::string text;
    int place = 0;
};

/// A table of a FROM clause, or two of them joined.
struct From {
    enum Kind { Table, Inner, Left, Right, Cross };
    Kind kind = Table;
    int place = 0;
    std::string table; // of a Table
    std::string alias; // of a Table, may be empty
    std::unique_ptr<From> left;
    std::unique_ptr<From> right;
    ExpressionPtr on;
};

/// One entry of a field list: an expression, or all columns of a table or of all tables.
struct Field {
    int place = 0;
    bool all = false;
    std::string table; // of "table.*"; empty for "*"
    ExpressionPtr value;
    std::string alias;
};

/// One term of ORDER BY.
struct Order {
    ExpressionPtr value;
    bool descending = false;
};

/// A SELECT.
struct Select {
    int place = 0;
    bool distinct = false;
    std::optional<int> top;
    std::vector<Field> fields;
    std::unique_ptr<From> from;
    ExpressionPtr where;
    std::vector<ExpressionPtr> groups;
    ExpressionPtr having;
    std::vector<Order> order;       // of the whole union, if it is the first of one
    std::unique_ptr<Select> united; // the next SELECT of a UNION
    bool keepsDuplicates = false;   // UNION ALL
};

/// An INSERT of values or of a query's rows.
struct Insert {
    Name table;
    std::vector<Name> columns;
    std::vector<ExpressionPtr> values; // empty when the rows come from select
    std::unique_ptr<Select> select;
};

/// "column = value" of an UPDATE.
struct Assignment {
    Name column;
    ExpressionPtr value;
};

/// An UPDATE.
struct Update {
    Name table;
    std::vector<Assignment> assignments;
    ExpressionPtr where;
};

/// A DELETE.
struct Delete {
    Name table;
    ExpressionPtr where;
};

/// A whole statement.
struct Statement {
    std::variant<std::unique_ptr<Select>, Insert, Update, Delete, Definition> body;
    int given = 0; // number of '?'
};

/// Whether an expression contains an aggregate function, not counting those inside subqueries.
bool holdsAggregate(const Expression &e);
/// Whether the name, in capitals, is COUNT, SUM, AVG, MIN or MAX.
bool isAggregate(std::string_view function);

} // namespace jet
