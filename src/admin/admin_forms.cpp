#include "admin/admin_forms.h"

void RegistrarFormulariosDeAdministracion(Sesion &, Formularios &) {}
