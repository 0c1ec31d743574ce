// The about box: the program's version and what it is working on.
#pragma once

#include "ui/form_base.h"

namespace ui
{

class FormRegistry;

} // namespace ui

/// Version, clinic, user and data folder at a glance.
class frmAcerca : public ui::FormBase
{
    Q_OBJECT
public:
    /// Reads what it shows from the session.
    explicit frmAcerca(Sesion &s, QWidget *parent = nullptr);

private:
    void build();
};

namespace board
{

/// Registers frmAcerca.
void registerBoardForms(Sesion &s, ui::FormRegistry &forms);

} // namespace board
