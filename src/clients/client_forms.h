#pragma once

namespace ui
{

class FormRegistry;

} // namespace ui

struct Sesion;

namespace clients
{

/// Registers the forms for clients and patients: frmPropietarios, frmTel, frmBusquedaClientes,
/// frmBusquedaMascotas and frmBusquedaRapida.
void registerClientForms(Sesion &s, ui::FormRegistry &forms);

} // namespace clients
