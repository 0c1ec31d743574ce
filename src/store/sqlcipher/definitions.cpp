#include "store/sqlcipher/definitions.h"

#include "store/declared_type.h"
#include "store/jet/text.h"
#include "store/sqlcipher/connection.h"
#include "store/sqlcipher/fragment.h"

#include <algorithm>

using namespace store;
using namespace sqlcipher;
using namespace Qt::StringLiterals;

namespace
{

// A column as the engine declares it.
struct EngineColumn {
    std::string name;
    std::string type;           // "TEXT(50)", "CURRENCY", ...; any type if it is the key
    std::string byDefault = {}; // a literal; "" for Null
    bool isKey = false;
    bool notNull = false;
};
using EngineColumns = std::vector<EngineColumn>;

std::string quotedText(std::string_view text) { return quoted(text, '\''); }

std::string textAt(sqlite3_stmt *st, int column)
{
    const auto *p = reinterpret_cast<const char *>(sqlite3_column_text(st, column));
    return p ? p : "";
}

// Runs a query and passes each row to a function. @throws StoreError
template <typename Take>
void forEachRow(sqlite3 *db, const std::string &sql, Take &&take)
{
    const Prepared st = prepare(db, sql);
    int r = SQLITE_ROW;
    while ((r = sqlite3_step(st.get())) == SQLITE_ROW)
        take(st.get());
    if (r != SQLITE_DONE)
        fail(db, r, sql);
}

EngineColumns columnsOf(sqlite3 *db, const std::string &schema, const std::string &table)
{
    EngineColumns columns;
    forEachRow(db, "PRAGMA " + quotedName(schema) + ".table_info(" + quotedName(table) + ")",
               [&columns](sqlite3_stmt *st) {
                   columns.push_back({.name = textAt(st, 1),
                                      .type = textAt(st, 2),
                                      .byDefault = textAt(st, 4),
                                      .isKey = sqlite3_column_int(st, 5) != 0,
                                      .notNull = sqlite3_column_int(st, 3) != 0});
               });
    return columns;
}

const EngineColumn *keyOf(const EngineColumns &columns)
{
    const auto key = std::ranges::find_if(columns, &EngineColumn::isKey);
    return key == columns.end() ? nullptr : &*key;
}

struct EngineIndex {
    std::string name;
    std::string sql;
};

std::vector<EngineIndex> indexesOf(sqlite3 *db, const std::string &schema, const std::string &table)
{
    std::vector<EngineIndex> found;
    forEachRow(db,
               "SELECT name, sql FROM " + quotedName(schema)
                   + ".sqlite_master WHERE type = 'index' AND sql IS NOT NULL AND tbl_name = "
                   + quotedText(table) + " ORDER BY rowid",
               [&found](sqlite3_stmt *st) {
                   found.push_back({textAt(st, 0), textAt(st, 1)});
               });
    return found;
}

std::string literalOf(const jet::NewColumn &c)
{
    if (c.byDefault.isNull())
        return {};
    const std::string text = c.byDefault.toText().toStdString();
    return isTextual(c.type) || isMoment(c.type) ? quotedText(text) : text;
}

Value readLiteral(const std::string &literal)
{
    if (literal.empty())
        return {};
    const QString t = QString::fromStdString(literal);
    if (t.startsWith(u'\''))
        return t.sliced(1, t.size() - 2).replace("''"_L1, "'"_L1);
    bool isWholeNumber = false;
    const qlonglong n = t.toLongLong(&isWholeNumber);
    return isWholeNumber ? Value(n) : Value(t.toDouble());
}

EngineColumn engineColumn(const jet::NewColumn &c)
{
    const bool counter = c.type == ColumnType::Counter;
    return {.name = c.name,
            .type = counter ? "INTEGER" : declaredType(c), // the engine requires this for a key
            .byDefault = literalOf(c),
            .isKey = counter,
            .notNull = c.notNull};
}

EngineColumn rowKey() { return {.name = RowKeyColumn, .type = "INTEGER", .isKey = true}; }

std::string declaration(const EngineColumn &c)
{
    std::string s = quotedName(c.name) + ' ' + c.type;
    if (c.isKey)
        return s + " PRIMARY KEY AUTOINCREMENT";
    if (!c.byDefault.empty())
        s += " DEFAULT " + c.byDefault;
    return c.notNull ? s + " NOT NULL" : s;
}

std::string join(const std::vector<std::string> &parts)
{
    std::string s;
    for (const std::string &p : parts)
        s += (s.empty() ? "" : ", ") + p;
    return s;
}

// A table whose definition is about to change.
struct Changing {
    sqlite3 *db;
    const std::string &schema;
    const std::string &table;

    std::string prefix() const { return quotedName(schema) + '.'; }
    std::string name() const { return prefix() + quotedName(table); }
};

std::string createTable(const std::string &name, EngineColumns columns)
{
    if (!keyOf(columns))
        columns.push_back(rowKey());
    std::vector<std::string> parts;
    for (const EngineColumn &c : columns)
        parts.push_back(declaration(c));
    return "CREATE TABLE " + name + " (" + join(parts) + ')';
}

// Index names are unique per database in the engine, but per table in the dialect.
std::string indexName(const std::string &table, const std::string &index)
{
    return table + '_' + index;
}

// The engine can neither change nor drop a column, nor add a key, so the table is created again
// with the given columns and the rows are copied in their order, with their keys.
std::vector<std::string> rebuild(const Changing &t, EngineColumns columns)
{
    const EngineColumns old = columnsOf(t.db, t.schema, t.table);
    const auto isIn = [](const EngineColumns &all, const std::string &name) {
        return std::ranges::find(all, name, &EngineColumn::name) != all.end();
    };
    // A counter column replaces the hidden key.
    if (std::ranges::count_if(columns, &EngineColumn::isKey) > 1)
        std::erase_if(columns, [](const EngineColumn &c) { return c.name == RowKeyColumn; });
    const EngineColumn *key = keyOf(columns);
    const std::string newKey = key ? key->name : RowKeyColumn;
    const EngineColumn *oldKey = keyOf(old);
    const std::string oldKeySql = oldKey ? quotedName(oldKey->name) : "rowid";

    std::vector<std::string> names{quotedName(newKey)};
    std::vector<std::string> values{isIn(old, newKey) ? quotedName(newKey) : oldKeySql};
    for (const EngineColumn &c : columns) {
        if (c.name == newKey || !isIn(old, c.name))
            continue;
        names.push_back(quotedName(c.name));
        values.push_back(quotedName(c.name));
    }
    const std::string temporary = t.table + "_nueva";
    const std::string temporaryName = t.prefix() + quotedName(temporary);
    const std::string sequence = t.prefix() + "sqlite_sequence";
    std::vector<std::string> all{
        createTable(temporaryName, columns),
        "INSERT INTO " + temporaryName + " (" + join(names) + ") SELECT " + join(values) + " FROM "
            + t.name() + " ORDER BY " + oldKeySql,
        // Keys of deleted rows are not reused.
        "DELETE FROM " + sequence + " WHERE name = " + quotedText(temporary)
            + " AND EXISTS (SELECT 1 FROM " + sequence + " WHERE name = " + quotedText(t.table)
            + ')',
        "INSERT INTO " + sequence + " (name, seq) SELECT " + quotedText(temporary) + ", seq FROM "
            + sequence + " WHERE name = " + quotedText(t.table),
        "DROP TABLE " + t.name(),
        "ALTER TABLE " + temporaryName + " RENAME TO " + quotedName(t.table),
    };
    for (const EngineIndex &index : indexesOf(t.db, t.schema, t.table)) {
        // An index on a dropped column is dropped too.
        if (std::ranges::any_of(old, [&](const EngineColumn &c) {
                return !isIn(columns, c.name) && c.name != RowKeyColumn
                       && index.sql.find(quotedName(c.name)) != std::string::npos;
            }))
            continue;
        // The stored SQL lacks the database's name before that of the index.
        std::string sql = index.sql;
        all.push_back(sql.insert(sql.find(" INDEX ") + 7, t.prefix()));
    }
    return all;
}

auto find(EngineColumns &columns, const std::string &name)
{
    return std::ranges::find(columns, name, &EngineColumn::name);
}

std::vector<std::string> addColumns(const Changing &t, const std::vector<jet::NewColumn> &added)
{
    EngineColumns columns = columnsOf(t.db, t.schema, t.table);
    std::vector<std::string> all;
    for (const jet::NewColumn &c : added) {
        columns.push_back(engineColumn(c));
        all.push_back("ALTER TABLE " + t.name() + " ADD COLUMN " + declaration(columns.back()));
    }
    const bool counter =
        std::ranges::any_of(added, [](const auto &c) { return c.type == ColumnType::Counter; });
    return counter ? rebuild(t, columns) : all;
}

std::vector<std::string> changeColumns(const Changing &t, const std::vector<jet::NewColumn> &wanted)
{
    EngineColumns columns = columnsOf(t.db, t.schema, t.table);
    for (const jet::NewColumn &w : wanted) {
        EngineColumn &c = *find(columns, w.name);
        const EngineColumn changed = engineColumn(w);
        c.type = changed.type;
        c.isKey = changed.isKey;
        c.notNull |= changed.notNull;
        if (!changed.byDefault.empty())
            c.byDefault = changed.byDefault;
    }
    return rebuild(t, columns);
}

std::vector<std::string> removeColumns(const Changing &t,
                                       const std::vector<jet::NewColumn> &removed)
{
    EngineColumns columns = columnsOf(t.db, t.schema, t.table);
    for (const jet::NewColumn &c : removed)
        columns.erase(find(columns, c.name));
    return rebuild(t, columns);
}

std::string createIndex(const Changing &t, const jet::Definition &d)
{
    const TableDescription table = describe(t.db, t.schema, t.table);
    std::vector<std::string> columns;
    for (const jet::NewColumn &c : d.columns) {
        const auto there = std::ranges::find(table.columns, c.name, &jet::NewColumn::name);
        // The engine's own collation: with one that only this program has, no other program could
        // write the file.
        columns.push_back(quotedName(c.name) + (isTextual(there->type) ? " COLLATE NOCASE" : ""));
    }
    std::string sql = std::string("CREATE ") + (d.unique ? "UNIQUE " : "") + "INDEX " + t.prefix()
                      + quotedName(indexName(t.table, d.index)) + " ON " + quotedName(t.table)
                      + " (" + join(columns) + ')';
    if (d.onlyWhere) {
        jet::NewColumn only = d.columns.front();
        only.type = std::ranges::find(table.columns, only.name, &jet::NewColumn::name)->type;
        only.byDefault = *d.onlyWhere;
        sql += " WHERE " + quotedName(only.name) + " = " + literalOf(only);
    }
    return sql;
}

} // namespace

std::vector<std::string> sqlcipher::tables(sqlite3 *db, const std::string &schema)
{
    std::vector<std::string> names;
    forEachRow(db,
               "SELECT name FROM " + quotedName(schema)
                   + ".sqlite_master WHERE type = 'table' AND name NOT LIKE 'sqlite\\_%' "
                     "ESCAPE '\\' ORDER BY rowid",
               [&names](sqlite3_stmt *st) { names.push_back(textAt(st, 0)); });
    return names;
}

TableDescription sqlcipher::describe(sqlite3 *db, const std::string &schema,
                                     const std::string &table)
{
    TableDescription d{.name = table, .columns = {}, .key = "rowid", .keyed = false, .indexes = {}};
    for (const EngineColumn &c : columnsOf(db, schema, table)) {
        if (c.isKey) {
            d.key = c.name;
            d.keyed = true;
        }
        if (c.name == RowKeyColumn)
            continue;
        jet::NewColumn column;
        static_cast<jet::Column &>(column) = readDeclaredType(c.name, c.type);
        if (c.isKey)
            column.type = ColumnType::Counter;
        else if (jet::fold(c.type) == "integer") // declared by another program
            column.type = ColumnType::Long;
        column.byDefault = readLiteral(c.byDefault);
        column.notNull = c.notNull;
        d.columns.push_back(std::move(column));
    }
    const std::string prefix = jet::fold(indexName(table, {}));
    for (const EngineIndex &index : indexesOf(db, schema, table))
        d.indexes.push_back(jet::fold(index.name).starts_with(prefix)
                                ? index.name.substr(prefix.size())
                                : index.name);
    return d;
}

std::vector<std::string> sqlcipher::statementsOf(sqlite3 *db, const std::string &schema,
                                                 const jet::Definition &d)
{
    const Changing t{db, schema, d.table};
    switch (d.kind) {
    case jet::Definition::CreateTable: {
        EngineColumns columns;
        for (const jet::NewColumn &c : d.columns)
            columns.push_back(engineColumn(c));
        return {createTable(t.name(), columns)};
    }
    case jet::Definition::AddColumn:
        return addColumns(t, d.columns);
    case jet::Definition::ChangeColumn:
        return changeColumns(t, d.columns);
    case jet::Definition::RemoveColumn:
        return removeColumns(t, d.columns);
    case jet::Definition::RemoveTable:
        return {"DROP TABLE " + t.name()};
    case jet::Definition::CreateIndex:
        return {createIndex(t, d)};
    case jet::Definition::RemoveIndex:
        return {"DROP INDEX " + t.prefix() + quotedName(indexName(t.table, d.index))};
    }
    return {};
}

std::vector<std::string> sqlcipher::keyStatements(sqlite3 *db, const std::string &schema,
                                                  const std::string &table)
{
    return rebuild({db, schema, table}, columnsOf(db, schema, table));
}
