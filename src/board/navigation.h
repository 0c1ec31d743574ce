// Where the board leads: its buttons, and the codes behind the icons of its lines.
#pragma once

#include "board/board_lines.h"

#include <QUrl>
#include <QVariantMap>
#include <span>

namespace board
{

/// What a click opens: a form with its parameters, or a page or folder outside the program.
struct Target {
    QString form;
    QVariantMap parameters;
    QUrl link;
    bool None() const { return form.isEmpty() && link.isEmpty(); }
};

/// The two icons that a line can have.
enum class WhichIcon { First = 1, Second = 2 };

/// Behind an icon of a line.
///
/// Parameters: frmlistados `rapido` (entry of its quick list), frmagenda `dia` and `modo` (1 the
/// day, 2 the tasks of the automation), frmAvisosPlanificadas `grupo` (18 to 21).
Target iconTarget(const Sesion &s, const BoardLine &line, WhichIcon icon);
/// Behind the text of a line: a page of help, or the folder that it names after its first ':'.
Target textTarget(const Sesion &s, const BoardLine &line);

/// Name of the picture that a click code shows, "" for none. It differs by column.
QString codePicture(int code, WhichIcon icon);

/// One of the ten buttons around the board.
struct BoardButton {
    QStringView name;
    QStringView form; // empty for the one that ends the program
    QStringView dibujo;
    int text;       // number of its caption
    char16_t digit; // with ALT
    bool soloSupervisor;
};

std::span<const BoardButton> boardButtons();

/// Whether the user may; a Common user is refused some.
bool canUse(const store::User &user, const BoardButton &button);

} // namespace board
