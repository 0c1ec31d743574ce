// The forms of the agenda.
#pragma once

struct Sesion;

namespace ui
{

class FormRegistry;

} // namespace ui

namespace agenda
{

/// Registers frmagenda and frmTurnos.
void registerAgendaForms(Sesion &s, ui::FormRegistry &forms);

} // namespace agenda
