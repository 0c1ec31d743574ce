// The quick search that CTRL+K opens over any form.
#pragma once

#include "clients/quick_search.h"
#include "ui/form_base.h"

namespace ui
{

class FormRegistry;
class Grid;
class HelpLine;

} // namespace ui

class QLineEdit;

/// A single box with the matches below, updated on every key. UP and DOWN move through them, ENTER
/// opens one in the registry.
class frmBusquedaRapida : public ui::FormBase
{
    Q_OBJECT
public:
    /// @param forms used to open the registry
    frmBusquedaRapida(Sesion &s, ui::FormRegistry &forms);

    /// Brings the index up to date and empties the box.
    void opened(const QVariantMap &parameters) override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void build();
    void search();
    void take(int row);

    ui::FormRegistry &m_forms;
    clients::QuickIndex m_index;

    QLineEdit *txtBuscar = nullptr;
    ui::Grid *grd = nullptr;
    ui::HelpLine *Ayu = nullptr;
};
