// The forms of this subsystem.
#pragma once

namespace ui
{

class FormRegistry;

} // namespace ui

struct Sesion;

namespace messages
{

/// Registers the forms under their names.
void registerMessageForms(Sesion &s, ui::FormRegistry &forms);

} // namespace messages
