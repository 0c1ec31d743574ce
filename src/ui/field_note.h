// What a box refuses, told beside it while the typing goes on.
#pragma once

#include <QString>

class QWidget;

namespace ui
{

/// Frames the box in red and tells why, on the help line of its window or, where there is none, in
/// a note below the box. Takes neither the focus nor a key; the next change of the box clears it.
void refuse(QWidget *box, const QString &why);
/// Takes frame and note away.
void clearRefusal(QWidget *box);

} // namespace ui
