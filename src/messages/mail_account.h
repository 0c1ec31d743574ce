// The account that mails leave from, one for all terminals: whichever starts the day sends. Name
// and password stand in the settings row, the server in the clinic's settings file.
#pragma once

#include "store/session.h"

enum class Cifrado { Ninguno, StartTls, Tls };

struct CuentaDeCorreo {
    QString usuario;
    QString contrasena;
    QString servidor;
    int puerto = 587;
    Cifrado cifrado = Cifrado::StartTls;

    bool Completa() const { return !usuario.isEmpty() && !contrasena.isEmpty(); }
};

CuentaDeCorreo LeerCuentaDeCorreo(Sesion &s);
/// Stores all of it; of the server as much as differs from what is stored.
/// @throws ErrorDeAlmacen
void GuardarCuentaDeCorreo(Sesion &s, const CuentaDeCorreo &cuenta);
/// The server alone, as far as it differs from what is stored.
/// @throws ErrorDeAlmacen
void GuardarServidorDeCorreo(Sesion &s, const CuentaDeCorreo &cuenta);
/// Asks for name and password, each again while it is longer than its column, and stores both;
/// without a name, or backing out, all stays as it was.
/// @return whether they were stored
bool ModificarCuentaDeCorreo(Sesion &s);
/// A number that a port can have.
bool EsPuerto(int puerto);
/// 587 with STARTTLS, 465 with TLS, 25 without either.
int PuertoHabitual(Cifrado cifrado);
