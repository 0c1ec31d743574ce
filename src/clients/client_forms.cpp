#include "clients/client_forms.h"

#include "clients/frmbusqueda.h"
#include "clients/frmbusquedarapida.h"
#include "clients/frmpropietarios.h"
#include "clients/frmtel.h"
#include "ui/form_registry.h"

using namespace clients;
using namespace Qt::StringLiterals;

void clients::registerClientForms(Sesion &s, ui::FormRegistry &forms)
{
    forms.enrol(u"frmPropietarios"_s, [&] { return new frmPropietarios(s, forms); });
    forms.enrol(u"frmTel"_s, [&s] { return new frmTel(s); });
    forms.enrol(u"frmBusquedaMascotas"_s,
                [&] { return new frmBusqueda(s, forms, Search::Patients); });
    forms.enrol(u"frmBusquedaClientes"_s,
                [&] { return new frmBusqueda(s, forms, Search::Clientes); });
    forms.enrol(u"frmBusquedaRapida"_s, [&] { return new frmBusquedaRapida(s, forms); });
}
