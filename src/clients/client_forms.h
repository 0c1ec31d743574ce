#pragma once

namespace ui
{

class FormRegistry;

} // namespace ui

struct Sesion;

namespace clients
{

/// Makes the forms of clients and patients known by name: frmPropietarios, frmTel,
/// frmBusquedaClientes, frmBusquedaMascotas, frmBusquedaRapida.
void registerClientForms(Sesion &s, ui::FormRegistry &forms);

} // namespace clients
