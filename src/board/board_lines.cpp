#include "board/board_lines.h"

using namespace board;

void AgregarPizarra(Sesion &s, const QString &message, int dibujo, int codigo1, int codigo2)
{
    s.morvane->Execute(
        "insert into pizarra (mensaje, dibujo, codigo1, codigo2) values (?, ?, ?, ?)",
        s.morvane->trimmed("pizarra", "mensaje", message), dibujo, codigo1, codigo2);
}

QList<BoardLine> board::readBoard(Sesion &s)
{
    QList<BoardLine> lines;
    Recordset r = s.morvane->OpenSnapshot("select * from pizarra");
    for (; !r.EOF_(); r.MoveNext())
        lines << BoardLine{r["mensaje"].toText(), r["dibujo"].toInt(), r["Codigo1"].toInt(),
                           r["Codigo2"].toInt()};
    return lines;
}
