// Product categories as the other subsystems need them.
#pragma once

#include "store/session.h"

/// The service that delivers or applies products of the category, 0 when it has none. It is the
/// kind (`tip`) of the tasks booked for them.
int ServicioDeCategoria(Sesion &s, int idcat);
