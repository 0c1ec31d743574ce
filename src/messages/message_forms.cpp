#include "messages/message_forms.h"

#include "messages/frmavisosplanificadas.h"
#include "messages/frmmensajeria.h"
#include "ui/form_registry.h"

using namespace Qt::StringLiterals;

void RegistrarFormulariosDeMensajes(Sesion &s, Formularios &formularios)
{
    formularios.Registrar(u"frmmensajeria"_s, [&s] { return new frmmensajeria(s); });
    formularios.Registrar(u"frmAvisosPlanificadas"_s,
                          [&] { return new frmAvisosPlanificadas(s, formularios); });
}
