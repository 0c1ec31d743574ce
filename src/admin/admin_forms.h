#pragma once

namespace ui
{

class FormRegistry;

} // namespace ui

struct Sesion;

namespace admin
{

/// Makes the settings known by name: frmConfiguracion.
void registerAdminForms(Sesion &s, ui::FormRegistry &forms);

} // namespace admin
