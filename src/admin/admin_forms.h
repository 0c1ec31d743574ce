#pragma once

class Formularios;
struct Sesion;

/// Makes the settings known by name: frmConfiguracion.
void RegistrarFormulariosDeAdministracion(Sesion &s, Formularios &formularios);
