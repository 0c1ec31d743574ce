// The forms of the agenda.
#pragma once

struct Sesion;
class Formularios;

/// Registers frmagenda and frmTurnos.
void RegistrarFormulariosDeAgenda(Sesion &s, Formularios &formularios);
