// Tells why a box refuses its input, beside the box and without interrupting the typing.
#pragma once

#include <QString>

class QWidget;

namespace ui
{

/// Frames the box in red and gives the reason, on the window's help line or, where there is none,
/// in a note below the box. Takes neither focus nor keys; the next change of the box clears it.
void refuse(QWidget *box, const QString &why);
/// Removes the frame and the note.
void clearRefusal(QWidget *box);

} // namespace ui
