#include "store/definition.h"

#include "store/engine.h"
#include "store/jet/text.h"

#include <algorithm>

using namespace store;

namespace
{

using Kind = jet::Definition::Kind;

const jet::Column *find(const jet::Table &table, const std::string &name)
{
    const auto i = std::ranges::find_if(
        table.columns, [&name](const jet::Column &c) { return !jet::compareText(c.name, name); });
    return i == table.columns.end() ? nullptr : &*i;
}

void requireNew(const jet::Definition &d, const jet::Table *table)
{
    for (auto c = d.columns.begin(); c != d.columns.end(); ++c)
        if ((table && find(*table, c->name))
            || std::any_of(d.columns.begin(), c, [&c](const jet::NewColumn &earlier) {
                   return !jet::compareText(earlier.name, c->name);
               }))
            throw StoreError(ErrorNumber::ColumnExists, QString::fromStdString(c->name));
}

// Also replaces the names of columns by their spelling in the table.
void requireThere(jet::Definition &d, const jet::Table &table)
{
    for (jet::NewColumn &c : d.columns) {
        const jet::Column *there = find(table, c.name);
        if (!there)
            throw StoreError(ErrorNumber::NotInCollection, QString::fromStdString(c.name));
        c.name = there->name;
    }
}

} // namespace

std::string store::define(Motor &motor, const std::string &schema, const jet::Catalogue &catalogue,
                          jet::Definition d)
{
    const jet::Table *table = catalogue.find(d.table);
    const bool creates = d.kind == Kind::CreateTable;
    if (creates == (table != nullptr))
        throw StoreError(creates ? ErrorNumber::TableExists : ErrorNumber::TableNotFound,
                         QString::fromStdString(d.table));
    if (table)
        d.table = table->name;
    if (creates || d.kind == Kind::AddColumn) {
        requireNew(d, table);
        for (jet::NewColumn &c : d.columns)
            if (c.type == ColumnType::YesNo && c.byDefault.isNull())
                c.byDefault = 0; // Yes/No is never Null
    } else {
        requireThere(d, *table);
    }
    motor.define(schema, d);
    return d.table;
}
