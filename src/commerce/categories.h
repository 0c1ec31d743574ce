// What other subsystems need to know about product categories.
#pragma once

#include "store/session.h"

/// The service that delivers or gives products of a category, 0 when there is none. It becomes the
/// kind (`tip`) of the tasks booked for them.
int ServicioDeCategoria(Sesion &s, int idcat);

namespace commerce
{

/// What client profiles need to know about a category.
struct ProfileCategory {
    int idcat = 0;
    QString nom;
    bool account = false; // whether purchases count towards the profile "good buyer"
};
/// All categories, ordered by name.
QList<ProfileCategory> profileCategories(Sesion &s);
/// Stores whether purchases of a category count. @throws StoreError when it cannot be written
void saveProfileCategory(Sesion &s, int idcat, bool account);

} // namespace commerce
