// The key that opens the quick find from any form.
#pragma once

namespace ui
{

class FormRegistry;

} // namespace ui

class QApplication;

namespace ui
{

/// CTRL+K in any window of the program opens the form frmBusquedaRapida, unless a box waits for an
/// answer.
void installQuickSearch(QApplication &app, FormRegistry &forms);

} // namespace ui
