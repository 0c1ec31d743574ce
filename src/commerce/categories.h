// Product categories as the other subsystems need them.
#pragma once

#include "store/session.h"

/// The service that delivers or applies products of the category, 0 when it has none. It is the
/// kind (`tip`) of the tasks booked for them.
int ServicioDeCategoria(Sesion &s, int idcat);

/// A category as the profiles see it.
struct CategoriaDePerfil {
    int idcat = 0;
    QString nom;
    bool cuenta = false; // buying of it makes a good buyer
};
/// All categories by name.
QList<CategoriaDePerfil> CategoriasDePerfil(Sesion &s);
/// @throws ErrorDeAlmacen
void GuardarCategoriaDePerfil(Sesion &s, int idcat, bool cuenta);
