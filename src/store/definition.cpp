// Changes of the schema: new tables and columns, and columns changed or dropped by rebuilding.

#include "store/definition.h"

#include "store/batch.h"
#include "store/database_internal.h"
#include "store/jet/text.h"

#include <algorithm>
#include <charconv>

using namespace store;

namespace
{

struct TypeName {
    ColumnType type;
    const char *name;
};

// COUNTER is declared as the engine needs it for an identity.
constexpr TypeName Names[] = {
    {ColumnType::Counter, "INTEGER"},   {ColumnType::Byte, "BYTE"},
    {ColumnType::Smallint, "SMALLINT"}, {ColumnType::Long, "LONG"},
    {ColumnType::Single, "SINGLE"},     {ColumnType::Double, "DOUBLE"},
    {ColumnType::Currency, "CURRENCY"}, {ColumnType::Date, "DATE"},
    {ColumnType::Time, "TIME"},         {ColumnType::YesNo, "YESNO"},
    {ColumnType::Memo, "MEMO"},
};

std::string quoted(std::string_view name)
{
    std::string s = "\"";
    for (char c : name) {
        if (c == '"')
            s += '"';
        s += c;
    }
    return s + '"';
}

std::string quotedText(std::string_view text)
{
    std::string s = "'";
    for (char c : text)
        s += c == '\'' ? std::string("''") : std::string(1, c);
    return s + '\'';
}

std::string columnDefinition(const DeclaredColumn &c)
{
    std::string s = quoted(c.name) + ' ' + c.type;
    if (c.identity)
        return s + " PRIMARY KEY AUTOINCREMENT";
    if (!c.byDefault.empty())
        s += " DEFAULT " + c.byDefault;
    return c.notNull ? s + " NOT NULL" : s;
}

bool isNumber(ColumnType t)
{
    return t != ColumnType::Text && t != ColumnType::Memo && t != ColumnType::Date
           && t != ColumnType::Time;
}

DeclaredColumn declared(const jet::NewColumn &c)
{
    DeclaredColumn d;
    d.name = c.name;
    d.type = declaredType(c);
    d.identity = c.type == ColumnType::Counter;
    d.notNull = c.notNull;
    if (c.type == ColumnType::YesNo)
        d.byDefault = "0"; // a Yes/No is never Null
    if (!c.byDefault.isNull()) {
        const std::string text = c.byDefault.toText().toStdString();
        d.byDefault = isNumber(c.type) ? text : quotedText(text);
    }
    return d;
}

bool isIdentity(const DeclaredColumn &c) { return c.identity; }

// The column of a table's key, nullptr when it has none.
const DeclaredColumn *keyOf(const std::vector<DeclaredColumn> &columns)
{
    const auto key = std::ranges::find_if(columns, isIdentity);
    return key == columns.end() ? nullptr : &*key;
}

std::string create(const std::string &completeName, const std::vector<DeclaredColumn> &columns)
{
    std::string sql = "CREATE TABLE " + completeName + " (";
    for (const DeclaredColumn &c : columns) {
        if (&c != &columns.front())
            sql += ", ";
        sql += columnDefinition(c);
    }
    if (!keyOf(columns))
        sql += ", " + rowKeyDeclaration();
    return sql + ")";
}

// An index that Names a column which is gone cannot be made again.
bool mentions(const std::string &index, const std::string &column)
{
    return index.find(quoted(column)) != std::string::npos;
}

// The engine can neither change nor drop a column, nor add an identity: the table is made anew
// with the rows copied in their order, each under its key. @p columnas what it has then
void rebuild(Motor &motor, const std::string &schema, const std::string &table,
             std::vector<DeclaredColumn> columns, const std::string &removed)
{
    const std::string temporal = table + "_nueva";
    const auto indices = motor.indices(schema, table);
    const auto old = motor.allColumns(schema, table);
    const auto wasThere = [&old](const std::string &name) {
        return std::ranges::find(old, name, &DeclaredColumn::name) != old.end();
    };
    // A counter of the table's own takes the hidden key's place.
    if (std::ranges::count_if(columns, isIdentity) > 1)
        std::erase_if(columns, [](const auto &c) { return c.name == RowKeyColumn; });
    const DeclaredColumn *key = keyOf(columns);
    const std::string newKey = key ? key->name : RowKeyColumn;
    const DeclaredColumn *oldKey = keyOf(old);
    const std::string oldKeySql = oldKey ? quoted(oldKey->name) : motor.undeclaredKey();

    std::string names = quoted(newKey);
    std::string values = wasThere(newKey) ? quoted(newKey) : oldKeySql;
    for (const DeclaredColumn &c : columns) {
        if (c.name == newKey || !wasThere(c.name))
            continue;
        names += ", " + quoted(c.name);
        values += ", " + quoted(c.name);
    }
    const std::string e = quoted(schema) + '.';
    const std::string sequence = e + "sqlite_sequence";
    Lote batch(motor);
    motor.run(create(e + quoted(temporal), columns));
    motor.run("INSERT INTO " + e + quoted(temporal) + " (" + names + ") SELECT " + values + " FROM "
              + e + quoted(table) + " ORDER BY " + oldKeySql);
    // Keys of rows that were deleted do not come back.
    motor.run("DELETE FROM " + sequence + " WHERE name = " + quotedText(temporal)
              + " AND EXISTS (SELECT 1 FROM " + sequence + " WHERE name = " + quotedText(table)
              + ")");
    motor.run("INSERT INTO " + sequence + " (name, seq) SELECT " + quotedText(temporal)
              + ", seq FROM " + sequence + " WHERE name = " + quotedText(table));
    motor.run("DROP TABLE " + e + quoted(table));
    motor.run("ALTER TABLE " + e + quoted(temporal) + " RENAME TO " + quoted(table));
    for (std::string index : indices) {
        if (!removed.empty() && mentions(index, removed))
            continue;
        // Stored without the database's name; it belongs in front of the index's own.
        const size_t where = index.find(" INDEX ");
        index.insert(where + 7, e);
        motor.run(index);
    }
    batch.commit();
}

} // namespace

std::string store::declaredType(const jet::Column &column)
{
    if (column.type == ColumnType::Text)
        return "TEXT(" + std::to_string(column.width ? column.width : 255) + ")";
    for (const TypeName &n : Names)
        if (n.type == column.type)
            return n.name;
    return "MEMO";
}

jet::Column store::readDeclaredType(const std::string &name, const std::string &type)
{
    jet::Column c;
    c.name = name;
    const std::string folded = jet::fold(type);
    if (folded.starts_with("text")) {
        c.type = ColumnType::Text;
        c.width = 255;
        if (const size_t p = folded.find('('); p != std::string::npos)
            std::from_chars(folded.data() + p + 1, folded.data() + folded.size(), c.width);
        return c;
    }
    if (folded == "integer") {
        c.type = ColumnType::Long;
        return c;
    }
    for (const TypeName &n : Names)
        if (jet::fold(n.name) == folded)
            c.type = n.type;
    return c;
}

std::string store::rowKeyDeclaration()
{
    return columnDefinition({.name = RowKeyColumn, .type = "INTEGER", .identity = true});
}

bool store::giveRowKey(Motor &motor, const std::string &schema, const std::string &table)
{
    const auto columns = motor.allColumns(schema, table);
    if (keyOf(columns))
        return false;
    rebuild(motor, schema, table, columns, {});
    return true;
}

namespace
{

/// A table whose definition changes.
struct Changing {
    Motor &motor;
    const std::string &schema;
    const std::string &table; // in the file's own letter case

    std::string name() const { return quoted(schema) + '.' + quoted(table); }
    std::vector<DeclaredColumn> columns() const { return motor.allColumns(schema, table); }
};

auto find(std::vector<DeclaredColumn> &columns, const std::string &name)
{
    return std::ranges::find_if(columns, [folded = jet::fold(name)](const DeclaredColumn &c) {
        return jet::fold(c.name) == folded;
    });
}

// @throws StoreError 3265 when it is not there
DeclaredColumn &existing(std::vector<DeclaredColumn> &columns, const std::string &name)
{
    const auto i = find(columns, name);
    if (i == columns.end())
        throw StoreError(ErrorNumber::NotInCollection, QString::fromStdString(name));
    return *i;
}

void addColumn(const Changing &t, const jet::NewColumn &requested)
{
    auto columns = t.columns();
    if (find(columns, requested.name) != columns.end())
        throw StoreError(ErrorNumber::ColumnExists, QString::fromStdString(requested.name));
    columns.push_back(declared(requested));
    if (columns.back().identity)
        rebuild(t.motor, t.schema, t.table, columns, {});
    else
        t.motor.run("ALTER TABLE " + t.name() + " ADD COLUMN " + columnDefinition(columns.back()));
}

void changeColumn(const Changing &t, const jet::NewColumn &requested)
{
    auto columns = t.columns();
    DeclaredColumn &c = existing(columns, requested.name);
    const DeclaredColumn changed = declared(requested);
    c.type = changed.type;
    c.identity = changed.identity;
    if (!requested.byDefault.isNull())
        c.byDefault = changed.byDefault;
    c.notNull = c.notNull || changed.notNull;
    rebuild(t.motor, t.schema, t.table, columns, {});
}

void removeColumn(const Changing &t, const jet::NewColumn &requested)
{
    auto columns = t.columns();
    const std::string name = existing(columns, requested.name).name;
    std::erase_if(columns, [&name](const DeclaredColumn &c) { return c.name == name; });
    rebuild(t.motor, t.schema, t.table, columns, name);
}

// Names of indexes count for the whole database in the engine, for the table alone in the dialect.
std::string indexName(const Changing &t, const std::string &index)
{
    return quoted(t.schema) + '.' + quoted(t.table + '_' + index);
}

void createIndex(const Changing &t, const jet::Definition &d)
{
    auto columns = t.columns();
    std::string sql = std::string(d.unique ? "CREATE UNIQUE" : "CREATE") + " INDEX "
                      + indexName(t, d.index) + " ON " + quoted(t.table) + " (";
    for (const jet::NewColumn &c : d.columns) {
        const DeclaredColumn &there = existing(columns, c.name);
        const ColumnType type = readDeclaredType(there.name, there.type).type;
        if (&c != &d.columns.front())
            sql += ", ";
        sql += quoted(there.name);
        // By the engine's own rule for letter case: a file with a rule that only this program knows
        // could not be written by any other.
        if (type == ColumnType::Text || type == ColumnType::Memo)
            sql += " COLLATE NOCASE";
    }
    t.motor.run(sql + ')');
}

void change(const Changing &t, const jet::Definition &d)
{
    Lote all(t.motor);
    switch (d.kind) {
    case jet::Definition::RemoveTable:
        t.motor.run("DROP TABLE " + t.name());
        break;
    case jet::Definition::CreateIndex:
        createIndex(t, d);
        break;
    case jet::Definition::RemoveIndex:
        t.motor.run("DROP INDEX " + indexName(t, d.index));
        break;
    default:
        for (const jet::NewColumn &c : d.columns)
            d.kind == jet::Definition::AddColumn      ? addColumn(t, c)
            : d.kind == jet::Definition::ChangeColumn ? changeColumn(t, c)
                                                      : removeColumn(t, c);
    }
    all.commit();
}

} // namespace

void Base::Internals::define(const jet::Definition &d)
{
    look(); // what others have defined until now counts for itself
    const jet::Table *table = catalogue.find(d.table);
    const std::string own = table ? table->name : d.table;
    if (d.kind != jet::Definition::CreateTable) {
        if (!table)
            throw StoreError(ErrorNumber::TableNotFound, QString::fromStdString(d.table));
        change({motor, schema, own}, d);
    } else {
        if (table)
            throw StoreError(ErrorNumber::TableExists, QString::fromStdString(d.table));
        std::vector<DeclaredColumn> columns;
        for (const jet::NewColumn &c : d.columns)
            columns.push_back(declared(c));
        motor.run(create(quoted(schema) + '.' + quoted(own), columns));
    }
    TableMarks &marks = *writesOf(own);
    ++marks.writes;
    ++marks.definitions;
    forgetDefinitions();
    schemaSeen = motor.schemaVersion(schema);
}
