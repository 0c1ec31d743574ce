// Who may work with the program.
#pragma once

#include "store/session.h"

namespace admin
{

/// A row of the list of users. The password never leaves the store.
struct UserRow {
    int idu = 0;
    QString nom;
    int ut = 0;
};

/// All users in the order in which they were added.
QList<UserRow> readUsers(Sesion &s);
/// A user's type as the list shows it.
QString typeText(const Sesion &s, int ut);

/// Asks whether to add a user, then for name, password and type, each again while the answer cannot
/// be used, and adds the user. Backing out of any of them, or an empty name or type, adds nothing.
/// @return the new id
std::optional<int> newUser(Sesion &s);

/// Deletes a user when asked back. Refused for the only user and for the last Supervisor, because
/// nobody could enter or come here again.
/// @return whether the user is gone
bool deleteUser(Sesion &s, int idu);

/// Asks for a new password; an empty one takes it away. @return whether it was stored
bool modifyPassword(Sesion &s, int idu);

} // namespace admin
