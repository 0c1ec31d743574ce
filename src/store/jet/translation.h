// What translating a statement of the dialect gives the store: SQL for the engine and what to know
// about it.
#pragma once

#include "store/value.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace jet
{

/// A column of a table.
struct Column {
    std::string name;
    store::ColumnType type = store::ColumnType::None;
    int width = 0; // n of TEXT(n), in characters; 0 otherwise
};

/// A table of a database.
struct Table {
    std::string name; // in the database's own letter case
    std::vector<Column> columns;
    std::string key = {}; // the column that identifies a row; may be a hidden one
};

/// The tables of one database, found regardless of letter case (ñ and Ñ included).
class Catalogue
{
public:
    virtual ~Catalogue() = default;
    /// Finds a table by name.
    /// @return nullptr when there is none; otherwise valid until the next definition
    virtual const Table *find(std::string_view name) const = 0;
};

/// Where the value of the engine's n-th parameter comes from.
struct Parameter {
    enum Origin {
        Given, // the caller's value number `index`, from 0
        Today, // the session's date, for Date()
        Hour,  // the session's time of day, for Time()
        Now    // both, for Now()
    };
    Origin origin = Given;
    int index = 0;
    Column target = {}; // the column that the value is written to; unnamed if none
    store::ColumnType compared = store::ColumnType::None; // Date or Time if compared with one
};

/// One column of a query's result.
struct OutputColumn {
    std::string name;   // the alias, or the column's own name
    std::string table;  // name or alias of the table in the FROM clause, "" for an expression
    std::string column; // the table's column behind it, "" for an expression
    store::ColumnType type = store::ColumnType::None;
    int width = 0;
};

/// A table of the FROM clause whose rows an updatable recordset can write back.
struct RowsSource {
    std::string table; // the table's own name
    std::string alias; // its name within the statement
    int keyColumn = 0; // position of the row's key among the engine's result columns
};

/// A column as a statement declares it.
struct NewColumn : Column {
    store::Value byDefault = {}; // converted to what the column stores
    bool notNull = false;
};

/// A schema change. The database carries it out, as it may take several engine statements.
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
    std::vector<NewColumn> columns; // those affected; for an index only their names count
    std::string index = {};         // name of the index
    bool unique = false;
    std::optional<store::Value> onlyWhere = {}; // index only rows whose single column has this
};

/// A translated statement.
struct Translation {
    enum Kind { Query, Change, Define };
    Kind kind = Query;
    std::string sql; // for the engine; empty for Define
    std::vector<Parameter> parameters;
    int valueCount = 0;                // number of '?' in the statement
    std::vector<OutputColumn> columns; // without the row keys
    std::vector<RowsSource> fuentes;   // only if the row keys were requested
    std::vector<std::string> tables;   // all tables that are read
    std::string writtenTable;          // of a Change
    Definition definition;             // of a Define
};

} // namespace jet
