// Where the board leads: its buttons and the codes behind the icons of its lines.
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
    /// Whether there is nothing to open.
    bool None() const { return form.isEmpty() && link.isEmpty(); }
};

/// The two icons that a line may have.
enum class WhichIcon { First = 1, Second = 2 };

/// The target of one of a line's icons, empty when its code opens nothing.
///
/// Parameters: frmlistados `rapido` (number of the quick listing), frmagenda `dia` and `modo` (1
/// the day, 2 the tasks of the automation), frmAvisosPlanificadas `grupo` (18 to 21).
Target iconTarget(const Sesion &s, const BoardLine &line, WhichIcon icon);
/// The target of a line's text: a help page, or the folder named after its first ':'. Empty for
/// other lines.
Target textTarget(const Sesion &s, const BoardLine &line);

/// Name of the picture for a click code, "" for none. It depends on the icon's column.
QString codePicture(int code, WhichIcon icon);

/// One of the ten buttons around the board.
struct BoardButton {
    QStringView name;
    QStringView form; // empty for the button that ends the program
    QStringView dibujo;
    int text;       // number of its caption
    char16_t digit; // pressed with ALT
    bool soloSupervisor;
};

/// The buttons in their order on screen.
std::span<const BoardButton> boardButtons();

/// Whether the user may use the button; some are refused to a Common user.
bool canUse(const store::User &user, const BoardButton &button);

} // namespace board
