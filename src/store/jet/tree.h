// A statement of the dialect, taken apart.
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

/// One node of an expression. Which of the fields count depends on the kind.
struct Expression {
    enum Kind {
        Null,
        Integer,   // integer
        Decimal,   // text, number
        Text,      // text
        Moment,    // text as the files keep it, tipo Date or Time
        Logical,   // integer, 0 or -1
        Given,     // integer: which '?' it is, from 0
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
    int place = 0;  // where it begins in the statement
    int height = 1; // of the tree below, itself included
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

/// A name and where it stands.
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

struct Order {
    ExpressionPtr value;
    bool descending = false;
};

struct Select {
    int place = 0;
    bool distinct = false;
    std::optional<int> top;
    std::vector<Field> fields;
    std::unique_ptr<From> from;
    ExpressionPtr where;
    std::vector<ExpressionPtr> groups;
    ExpressionPtr having;
    std::vector<Order> order;       // of the whole union, when there is one
    std::unique_ptr<Select> united; // the next SELECT of a UNION
    bool keepsDuplicates = false;   // UNION ALL
};

struct Insert {
    Name table;
    std::vector<Name> columns;
    std::vector<ExpressionPtr> values; // empty when the rows come from select
    std::unique_ptr<Select> select;
};

struct Assignment {
    Name column;
    ExpressionPtr value;
};

struct Update {
    Name table;
    std::vector<Assignment> assignments;
    ExpressionPtr where;
};

struct Delete {
    Name table;
    ExpressionPtr where;
};

struct Statement {
    std::variant<std::unique_ptr<Select>, Insert, Update, Delete, Definition> body;
    int given = 0; // how many '?' there are
};

/// Whether an expression computes over a group of rows. Subselects count for themselves.
bool holdsAggregate(const Expression &e);
/// COUNT, SUM, AVG, MIN and MAX.
bool isAggregate(std::string_view function);

} // namespace jet
