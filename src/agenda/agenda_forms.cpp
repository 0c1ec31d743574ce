#include "agenda/agenda_forms.h"

#include "agenda/frmagenda.h"
#include "agenda/frmturnos.h"
#include "ui/form_registry.h"

using namespace Qt::StringLiterals;

void RegistrarFormulariosDeAgenda(Sesion &s, Formularios &formularios)
{
    formularios.Registrar(u"frmagenda"_s, [&] { return new frmagenda(s, formularios); });
    formularios.Registrar(u"frmTurnos"_s, [&] { return new frmTurnos(s); });
}
