// The lines of the day's board: writing them and reading them back.
#pragma once

#include "store/session.h"

namespace board
{

struct BoardLine {
    QString message;
    int dibujo = 0;  // picture number, 0 for none
    int codigo1 = 0; // click codes of the two icons, 0 for none
    int codigo2 = 0;
};

/// The lines in the order in which they were written.
QList<BoardLine> readBoard(Sesion &s);

} // namespace board

/// Adds a line to the board: the only writer. Text longer than the column is cut.
void AgregarPizarra(Sesion &s, const QString &message, int dibujo, int codigo1, int codigo2);
