// The key that opens the quick search from any form.
#pragma once

namespace ui
{

class FormRegistry;

} // namespace ui

class QApplication;

namespace ui
{

/// Makes CTRL+K open the form frmBusquedaRapida from any window of the program, unless a dialog is
/// waiting for an answer.
void installQuickSearch(QApplication &app, FormRegistry &forms);

} // namespace ui
