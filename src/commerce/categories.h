// Product categories as the other subsystems need them.
#pragma once

#include "store/session.h"

/// The service that delivers or applies products of the category, 0 when it has none. It is the
/// kind (`tip`) of the tasks booked for them.
int ServicioDeCategoria(Sesion &s, int idcat);

namespace commerce
{

/// A category as the profiles see it.
struct ProfileCategory {
    int idcat = 0;
    QString nom;
    bool account = false; // buying of it makes a good buyer
};
/// All categories by name.
QList<ProfileCategory> profileCategories(Sesion &s);
/// @throws StoreError
void saveProfileCategory(Sesion &s, int idcat, bool account);

} // namespace commerce
