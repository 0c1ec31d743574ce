#include "store/sqlcipher/rows.h"

#include "store/sqlcipher/connection.h"

using namespace store;
using sqlcipher::quotedName;

namespace
{

// Some memos need to be stored as bytes, or the engine would turn them into numbers.
const char *placeOf(const RowColumn &c) { return c.type == ColumnType::Memo ? "jet_memo(?)" : "?"; }

// Condition that a column still holds a value; a memo may be stored as bytes.
std::string unchanged(const RowColumn &c)
{
    const std::string name = quotedName(c.name);
    return (c.type == ColumnType::Memo ? "CAST(" + name + " AS TEXT)" : name) + " IS ?";
}

template <typename Part>
std::string list(const std::vector<RowColumn> &columns, Part &&part)
{
    std::string s;
    for (const RowColumn &c : columns)
        s += (s.empty() ? "" : ", ") + std::string(part(c));
    return s;
}

std::string nameOf(const RowColumn &c) { return quotedName(c.name); }

} // namespace

std::string sqlcipher::rowText(const std::string &schema, const RowStatement &s)
{
    const std::string table = quotedName(schema) + '.' + quotedName(s.table);
    if (s.kind == RowStatement::Add)
        return "INSERT INTO " + table
               + (s.columns.empty() ? " DEFAULT VALUES"
                                    : " (" + list(s.columns, nameOf) + ") VALUES ("
                                          + list(s.columns, placeOf) + ')');
    std::string where = " WHERE " + quotedName(s.key) + " = ?";
    for (const RowColumn &c : s.unchanged)
        where += " AND " + unchanged(c);
    switch (s.kind) {
    case RowStatement::Change:
        return "UPDATE " + table + " SET "
               + list(s.columns, [](const RowColumn &c) { return nameOf(c) + " = " + placeOf(c); })
               + where;
    case RowStatement::Erase:
        return "DELETE FROM " + table + where;
    default:
        return "SELECT " + (s.columns.empty() ? "1" : list(s.columns, nameOf)) + " FROM " + table
               + where;
    }
}
