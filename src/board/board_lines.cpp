#include "board/board_lines.h"

void AgregarPizarra(Sesion &s, const QString &mensaje, int dibujo, int codigo1, int codigo2)
{
    s.morvane->Execute(
        "insert into pizarra (mensaje, dibujo, codigo1, codigo2) values (?, ?, ?, ?)",
        s.morvane->Recortado("pizarra", "mensaje", mensaje), dibujo, codigo1, codigo2);
}

QList<LineaDePizarra> LeerPizarra(Sesion &s)
{
    QList<LineaDePizarra> lineas;
    Recordset r = s.morvane->OpenSnapshot("select * from pizarra");
    for (; !r.EOF_(); r.MoveNext())
        lineas << LineaDePizarra{r["mensaje"].toText(), r["dibujo"].toInt(), r["Codigo1"].toInt(),
                                 r["Codigo2"].toInt()};
    return lineas;
}
