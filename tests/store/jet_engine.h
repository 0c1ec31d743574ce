// A plain engine in memory with the tables of a short declaration, for statements of the dialect.
#pragma once

#include "store/column_value.h"
#include "store/errors.h"
#include "store/jet/text.h"
#include "store/sqlcipher/emitter.h"
#include "store/sqlcipher/functions.h"

#include <map>
#include <sqlite3.h>
#include <sstream>

using namespace store;

namespace jet_test
{

/// The tables of a declaration in the form of the schema files: "table Name", then a line
/// "    column TYPE" for each column.
class Tables : public jet::Catalogue
{
public:
    Tables() = default;
    Tables(Tables &&) = default; // keeps pointers to the tables valid, unlike a copy

    void read(std::istream &lines)
    {
        for (std::string line; std::getline(lines, line);) {
            if (line.starts_with("table "))
                Add(unbracketed(line.substr(6)));
            else if (const size_t at = line.find_first_not_of(' ');
                     m_last && at != line.npos && at > 0 && line.substr(at, 6) != "index ")
                addColumn(line.substr(at));
        }
    }

    const jet::Table *find(std::string_view name) const override
    {
        const auto found = m_tables.find(jet::fold(name));
        return found == m_tables.end() ? nullptr : &found->second;
    }

    /// SQL that creates the tables in an engine.
    std::string definitions() const
    {
        std::string sql;
        for (const auto &[key, table] : m_tables) {
            sql += "CREATE TABLE \"" + table.name + "\" (";
            for (size_t i = 0; i < table.columns.size(); ++i)
                sql +=
                    (i ? ", \"" : "\"") + table.columns[i].name + "\" " + m_declared.at(&table)[i];
            sql += ");\n";
        }
        return sql;
    }

private:
    static std::string unbracketed(std::string name)
    {
        return name.starts_with('[') ? name.substr(1, name.find(']') - 1) : name;
    }

    void Add(const std::string &name)
    {
        m_last = &m_tables[jet::fold(name)];
        m_last->name = name;
        m_last->key = "rowid";
    }

    void addColumn(const std::string &line)
    {
        const size_t nameEnd = line.starts_with('[') ? line.find(']') + 1 : line.find(' ');
        std::istringstream rest(line.substr(nameEnd));
        std::string type;
        rest >> type;
        static const std::map<std::string, ColumnType> types{
            {"COUNTER", ColumnType::Counter},   {"BYTE", ColumnType::Byte},
            {"SMALLINT", ColumnType::Smallint}, {"LONG", ColumnType::Long},
            {"SINGLE", ColumnType::Single},     {"DOUBLE", ColumnType::Double},
            {"CURRENCY", ColumnType::Currency}, {"DATE", ColumnType::Date},
            {"TIME", ColumnType::Time},         {"YESNO", ColumnType::YesNo},
            {"MEMO", ColumnType::Memo}};
        jet::Column c{unbracketed(line.substr(0, nameEnd)), ColumnType::Text, 0};
        if (const auto found = types.find(type); found != types.end())
            c.type = found->second;
        else
            c.width = std::stoi(type.substr(type.find('(') + 1));
        m_last->columns.push_back(c);
        m_declared[m_last].push_back(
            c.type == ColumnType::Counter ? "INTEGER PRIMARY KEY AUTOINCREMENT" : type);
    }

    std::map<std::string, jet::Table> m_tables;
    std::map<const jet::Table *, std::vector<std::string>> m_declared;
    jet::Table *m_last = nullptr;
};

/// Values for each '?': bound as a number if it reads as one, else as text; always as text after a
/// leading apostrophe.
using Given = std::vector<std::string>;

class Engine
{
public:
    explicit Engine(const std::string &declaration)
    {
        std::istringstream lines(declaration);
        m_tables.read(lines);
        open();
    }
    explicit Engine(Tables tables) : m_tables(std::move(tables)) { open(); }
    ~Engine() { sqlite3_close(m_db); }
    Engine(const Engine &) = delete;
    Engine &operator=(const Engine &) = delete;

    const Tables &catalog() const { return m_tables; }

    /// Compiles SQL. Throws when the engine refuses it.
    void prepare(const std::string &sql) { sqlite3_finalize(compiled(sql)); }

    /// Runs the engine's own SQL.
    void exec(const std::string &sql)
    {
        char *message = nullptr;
        if (sqlite3_exec(m_db, sql.c_str(), nullptr, nullptr, &message) != SQLITE_OK) {
            const std::string what = message;
            sqlite3_free(message);
            throw std::runtime_error(what + "\n" + sql);
        }
    }

    /// Runs a statement of the dialect. Returns rows as "a|b\n", Null as an empty field, blobs as
    /// x'...'.
    std::string rows(const std::string &dialect, const Given &given = {}, bool keys = false)
    {
        return Run(sqlcipher::translate(dialect, m_tables, "main", keys), given);
    }

    /// The engine's query plan for a statement.
    std::string Plan(const std::string &dialect)
    {
        jet::Translation t = sqlcipher::translate(dialect, m_tables, "main");
        t.sql = "EXPLAIN QUERY PLAN " + t.sql;
        for (jet::Parameter &p : t.parameters)
            p.compared = ColumnType::None; // the bound values do not matter here
        return Run(t, Given(size_t(t.valueCount), "1"));
    }

    /// The error number of a refused statement, 0 when it is accepted.
    int error(const std::string &dialect) const
    {
        try {
            sqlcipher::translate(dialect, m_tables, "main");
        } catch (const StoreError &e) {
            return e.number;
        }
        return 0;
    }

    std::string today = "2024-03-05";
    std::string time = "09:30:00";

private:
    void open()
    {
        sqlite3_open(":memory:", &m_db);
        sqlcipher::registerFunctions(m_db);
        exec(m_tables.definitions());
    }

    sqlite3_stmt *compiled(const std::string &sql)
    {
        sqlite3_stmt *s = nullptr;
        if (sqlite3_prepare_v2(m_db, sql.c_str(), -1, &s, nullptr) != SQLITE_OK)
            throw std::runtime_error(std::string(sqlite3_errmsg(m_db)) + "\n" + sql);
        return s;
    }

    std::string Run(const jet::Translation &t, const Given &given)
    {
        sqlite3_stmt *s = compiled(t.sql);
        for (size_t i = 0; i < t.parameters.size(); ++i)
            bind(s, int(i + 1), t.parameters[i], given);
        std::string rows;
        int result;
        while ((result = sqlite3_step(s)) == SQLITE_ROW) {
            for (int i = 0; i < sqlite3_column_count(s); ++i)
                rows += (i ? "|" : "") + Field(s, i);
            rows += "\n";
        }
        const std::string message = sqlite3_errmsg(m_db);
        sqlite3_finalize(s);
        if (result != SQLITE_DONE)
            throw std::runtime_error(message + "\n" + t.sql);
        return rows;
    }

    void bind(sqlite3_stmt *s, int n, const jet::Parameter &p, const Given &given) const
    {
        std::string v = p.origin == jet::Parameter::Today  ? today
                        : p.origin == jet::Parameter::Hour ? time
                        : p.origin == jet::Parameter::Now  ? today + " " + time
                                                           : given.at(size_t(p.index));
        char *end = nullptr;
        const double number = std::strtod(v.c_str(), &end);
        Value value = QString::fromStdString(v.starts_with('\'') ? v.substr(1) : v);
        if (!v.empty() && *end == '\0')
            value = number == qint64(number) ? Value(qint64(number)) : Value(number);
        if (!p.target.name.empty())
            value = toColumn(value, p.target);
        else if (p.compared != ColumnType::None)
            value = toMoment(value, p.compared);
        if (const auto *whole = value.is<qint64>())
            sqlite3_bind_int64(s, n, *whole);
        else if (value.is<double>() || value.is<Moneda>() || value.is<bool>())
            sqlite3_bind_double(s, n, value.toDouble());
        else
            sqlite3_bind_text(s, n, value.toText().toUtf8().constData(), -1, SQLITE_TRANSIENT);
    }

    static std::string Field(sqlite3_stmt *s, int i)
    {
        const int type = sqlite3_column_type(s, i);
        const auto *data = static_cast<const char *>(sqlite3_column_blob(s, i));
        const std::string bytes(data ? data : "", size_t(sqlite3_column_bytes(s, i)));
        if (type == SQLITE_BLOB)
            return "x'" + bytes + "'";
        if (type == SQLITE_FLOAT) {
            std::ostringstream out;
            out.precision(17);
            out << sqlite3_column_double(s, i);
            return out.str();
        }
        if (type == SQLITE_INTEGER)
            return std::to_string(sqlite3_column_int64(s, i));
        return bytes;
    }

    Tables m_tables;
    sqlite3 *m_db = nullptr;
};

} // namespace jet_test
