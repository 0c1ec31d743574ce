// The failures that the program has noted: to read, to copy for the support, to clear.
#pragma once

#include "ui/form_base.h"

namespace ui
{

class Grid;
class HelpLine;

} // namespace ui

class frmErrores : public ui::FormBase
{
    Q_OBJECT
public:
    explicit frmErrores(Sesion &s, QWidget *parent = nullptr);

    /// Reads the list.
    void opened(const QVariantMap &parameters) override;

private:
    void load();
    void clear();

    ui::Grid *grd = nullptr;
    ui::HelpLine *Ayu = nullptr;
    QPushButton *cmdBorrar = nullptr;
};
