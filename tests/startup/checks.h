// What must hold of every row that the program itself brings into a clinic.
#pragma once

#include "support/clinic.h"

/// Texts that are longer than their column, as "table.column: text", one a line. Nothing else stops
/// them: the engine takes any length.
inline QString TextosDemasiadoLargos(Base &base)
{
    QString hallados;
    for (const std::string &tabla : base.ElMotor().Tablas(base.Esquema())) {
        Recordset r = base.OpenSnapshot("select * from [" + tabla + "]");
        const jet::Tabla *t = base.Catalogo().Buscar(tabla);
        for (; !r.EOF_(); r.MoveNext())
            for (const jet::Columna &c : t->columnas)
                if (c.tipo == Tipo::Text && r[c.nombre].toText().size() > c.ancho)
                    hallados += QString::fromStdString(tabla + "." + c.nombre + ": ")
                                + r[c.nombre].toText() + u'\n';
    }
    return hallados;
}

/// Every row of a database, table after table.
inline QString Volcado(Base &base)
{
    QString todo;
    for (const std::string &tabla : base.ElMotor().Tablas(base.Esquema()))
        todo +=
            QString::fromStdString(tabla) + u'\n' + Filas(base, "select * from [" + tabla + "]");
    return todo;
}
