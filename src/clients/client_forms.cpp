#include "clients/client_forms.h"

void RegistrarFormulariosDeClientes(Sesion &, Formularios &) {}
