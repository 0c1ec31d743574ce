#pragma once

namespace ui
{

class FormRegistry;

} // namespace ui

struct Sesion;

namespace admin
{

/// Registers the settings form, frmConfiguracion.
void registerAdminForms(Sesion &s, ui::FormRegistry &forms);

} // namespace admin
