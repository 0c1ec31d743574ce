#include "agenda/agenda_forms.h"

#include "agenda/frmagenda.h"
#include "agenda/frmturnos.h"
#include "ui/form_registry.h"

using namespace agenda;
using namespace Qt::StringLiterals;

void agenda::registerAgendaForms(Sesion &s, ui::FormRegistry &forms)
{
    forms.enrol(u"frmagenda"_s, [&] { return new frmagenda(s, forms); });
    forms.enrol(u"frmTurnos"_s, [&] { return new frmTurnos(s); });
}
