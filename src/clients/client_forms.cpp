#include "clients/client_forms.h"

#include "clients/frmbusqueda.h"
#include "clients/frmbusquedarapida.h"
#include "clients/frmimportar.h"
#include "clients/frmpropietarios.h"
#include "clients/frmtel.h"
#include "ui/form_registry.h"

using namespace Qt::StringLiterals;

void RegistrarFormulariosDeClientes(Sesion &s, Formularios &formularios)
{
    formularios.Registrar(u"frmPropietarios"_s,
                          [&] { return new frmPropietarios(s, formularios); });
    formularios.Registrar(u"frmTel"_s, [&s] { return new frmTel(s); });
    formularios.Registrar(u"frmImportar"_s, [&s] { return new frmImportar(s); });
    formularios.Registrar(u"frmBusquedaMascotas"_s,
                          [&] { return new frmBusqueda(s, formularios, Busqueda::Mascotas); });
    formularios.Registrar(u"frmBusquedaClientes"_s,
                          [&] { return new frmBusqueda(s, formularios, Busqueda::Clientes); });
    formularios.Registrar(u"frmBusquedaRapida"_s,
                          [&] { return new frmBusquedaRapida(s, formularios); });
}
