#pragma once

class Formularios;
struct Sesion;

/// Makes the forms of clients and patients known by name: frmPropietarios, frmTel, frmImportar,
/// frmBusquedaClientes, frmBusquedaMascotas, frmBusquedaRapida.
void RegistrarFormulariosDeClientes(Sesion &s, Formularios &formularios);
