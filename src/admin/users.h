// The users of the program.
#pragma once

#include "store/session.h"

namespace admin
{

/// A row of the list of users. Passwords never leave the store.
struct UserRow {
    int idu = 0;
    QString nom;
    int ut = 0; // type
};

/// All users, in the order in which they were added.
/// @throws StoreError
QList<UserRow> readUsers(Sesion &s);
/// A user type as shown in the list.
QString typeText(const Sesion &s, int ut);

/// Asks for confirmation, then for name, password and type, each again until it is usable, and adds
/// the user. Cancelling at any point, or an empty name or type, adds nothing.
/// @return the new id, nullopt when nothing was added
/// @throws StoreError
std::optional<int> newUser(Sesion &s);

/// Deletes a user, after asking. Refused for the only user and for the last Supervisor, because
/// nobody could log in or get back here.
/// @return whether the user was deleted
/// @throws StoreError
bool deleteUser(Sesion &s, int idu);

/// Asks for a new password; an empty one removes it.
/// @return whether it was stored
/// @throws StoreError
bool modifyPassword(Sesion &s, int idu);

} // namespace admin
