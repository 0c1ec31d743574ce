// What program this is, and with what it works.
#pragma once

#include "ui/form_base.h"

namespace ui
{

class FormRegistry;

} // namespace ui

class frmAcerca : public ui::FormBase
{
    Q_OBJECT
public:
    explicit frmAcerca(Sesion &s, QWidget *parent = nullptr);

private:
    void build();
};

namespace board
{

/// Makes the forms of the board known by name.
void registerBoardForms(Sesion &s, ui::FormRegistry &forms);

} // namespace board
