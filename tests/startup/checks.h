// Checks for all rows that the program itself writes into a clinic.
#pragma once

#include "support/clinic.h"

/// Texts that are longer than their column, as "table.column: text", one per line. The engine
/// itself accepts any length.
inline QString overlongTexts(Base &base)
{
    QString found;
    for (const std::string &table : base.engine().tables(base.Schema())) {
        Recordset r = base.OpenSnapshot("select * from [" + table + "]");
        const jet::Table *t = base.catalogue().find(table);
        for (; !r.EOF_(); r.MoveNext())
            for (const jet::Column &c : t->columns)
                if (c.type == store::ColumnType::Text && r[c.name].toText().size() > c.width)
                    found += QString::fromStdString(table + "." + c.name + ": ")
                             + r[c.name].toText() + u'\n';
    }
    return found;
}

/// Every row of a database, table by table.
inline QString dump(Base &base)
{
    QString all;
    for (const std::string &table : base.engine().tables(base.Schema()))
        all +=
            QString::fromStdString(table) + u'\n' + allRows(base, "select * from [" + table + "]");
    return all;
}
