#include "admin/admin_forms.h"

#include "admin/frmconfiguracion.h"
#include "ui/form_registry.h"

using namespace Qt::StringLiterals;

void RegistrarFormulariosDeAdministracion(Sesion &s, Formularios &formularios)
{
    formularios.Registrar(u"frmConfiguracion"_s, [&s, &formularios]() -> FormBase * {
        if (s.usuario.EsComun()) {
            s.dialogos.Mensaje(s(1));
            return nullptr;
        }
        return new frmConfiguracion(s, formularios);
    });
}
