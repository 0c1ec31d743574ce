#include "messages/message_forms.h"

#include "messages/frmavisosplanificadas.h"
#include "messages/frmmensajeria.h"
#include "ui/form_registry.h"

using namespace messages;
using namespace Qt::StringLiterals;

void messages::registerMessageForms(Sesion &s, ui::FormRegistry &forms)
{
    forms.enrol(u"frmmensajeria"_s, [&s] { return new frmmensajeria(s); });
    forms.enrol(u"frmAvisosPlanificadas"_s, [&] { return new frmAvisosPlanificadas(s, forms); });
}
