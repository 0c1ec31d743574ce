// The forms of this subsystem.
#pragma once

class Formularios;
struct Sesion;

/// Registers them under their given names.
void RegistrarFormulariosDeMensajes(Sesion &s, Formularios &formularios);
