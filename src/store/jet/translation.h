// What the dialect hands to the store: a statement of the rules, ready for the engine.
#pragma once

#include "store/value.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace jet
{

struct Column {
    std::string name;
    store::ColumnType type = store::ColumnType::None;
    int width = 0; // of TEXT(n); 0 otherwise
};

struct Table {
    std::string name; // in the database's own letter case
    std::vector<Column> columns;
    std::string key = {}; // the column that names a row, which need not be one of the columns
};

/// The tables of one database, found without regard to letter case (ñ and Ñ included).
class Catalogue
{
public:
    virtual ~Catalogue() = default;
    /// @return nullptr when the database has no such table. The pointer lives until the next
    ///         statement that defines something.
    virtual const Table *find(std::string_view name) const = 0;
};

/// Where the value of the engine's n-th parameter comes from.
struct Parameter {
    enum Origin {
        Given, // the caller's value number `index`, from 0
        Today, // the session's day, for Date()
        Hour,  // the session's time of day, for Time()
        Now    // both, for Now()
    };
    Origin origin = Given;
    int index = 0;
    Column target = {}; // the column that the value goes into, with its gate
    store::ColumnType compared = store::ColumnType::None; // Date or Time: what it is compared with
};

/// One column of the rows that a query gives.
struct OutputColumn {
    std::string name;   // as asked for: the alias, or the column's own name
    std::string table;  // name or alias of the table in the FROM clause, "" for an expression
    std::string column; // the table's column behind it, "" for an expression
    store::ColumnType type = store::ColumnType::None;
    int width = 0;
};

/// A table of the FROM clause whose rows an updatable recordset can write back.
struct RowsSource {
    std::string table; // the table's own name
    std::string alias; // the name that the statement uses for it
    int keyColumn = 0; // position of the row's key among the engine's result columns
};

/// A column as a statement declares it.
struct NewColumn : Column {
    store::Value byDefault = {}; // as the column takes it
    bool notNull = false;
};

/// A change of the schema, carried out by the database and not by one engine statement.
struct Definition {
    enum Kind {
        CreateTable,
        AddColumn,
        ChangeColumn,
        RemoveColumn,
        RemoveTable,
        CreateIndex,
        RemoveIndex
    };
    Kind kind = CreateTable;
    std::string table;
    std::vector<NewColumn> columns; // all that are meant; of an index only their names
    std::string index = {};         // its name
    bool unique = false;
    std::optional<store::Value> onlyWhere = {}; // value of an index's one column; all without
};

struct Translation {
    enum Kind { Query, Change, Define };
    Kind kind = Query;
    std::string sql; // the engine's own; empty for Define
    std::vector<Parameter> parameters;
    int valueCount = 0; // how many '?' the statement holds
    std::vector<OutputColumn> columns;
    std::vector<RowsSource> fuentes; // only when asked for
    std::vector<std::string> tables; // all whose rows are read
    std::string writtenTable;        // of a Cambio
    Definition definition;           // of a Define
};

} // namespace jet
