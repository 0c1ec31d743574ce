// The data folder as a whole: who is using it, copies of it, and repair of damaged files.
#pragma once

#include "store/session.h"

namespace store
{

/// Keeps every other session out of the data folder, even one of the same process, during work that
/// must not overlap with any other: upgrades, repair, restoring. Sessions that start meanwhile
/// wait.
class Alone
{
public:
    /// Tries to get the folder, without waiting.
    explicit Alone(Sesion &s);
    /// Lets other sessions in again.
    ~Alone();
    Alone(const Alone &) = delete;
    Alone &operator=(const Alone &) = delete;
    /// Whether no other session was there. If false, no session is kept out.
    explicit operator bool() const { return m_presence != nullptr; }

private:
    Lock *m_presence = nullptr;
};

/// Copies morvane, clientes, finanzas and os of the open store into a folder, created if needed,
/// under their usual names. All copies are of the same moment, even while other terminals work.
/// Never copy these files in any other way while they are open: closing a file drops the locks that
/// this process has on it.
/// @throws StoreError; an existing copy is then either unchanged or replaced by a complete one
void copyDatabases(Sesion &s, const QString &folder);

/// Leaves a mark in the data folder that makes the next start read all files and repair the damaged
/// ones. Call it when a statement fails with 3343. Failure to write the mark is ignored.
void noteDamage(const Sesion &s);
/// Whether the data folder has that mark.
bool isDamageNoted(const Sesion &s);

/// Looks at the first bytes of the four files.
/// @throws StoreError 3343 with a text for the user, for a file that is plainly not a database of
///         this system
void refuseForeignFiles(const Sesion &s);

/// Repairs the damaged files and removes the mark. The damaged files are kept next to the repaired
/// ones, under another name. The databases must be closed and the session alone in the folder.
/// @return a text for the user about what was done; "" when no file was damaged
/// @throws StoreError 3343 with a text for the user, for a file that cannot be repaired; all files
///         are then unchanged
QString repairDatabases(const Sesion &s);

/// Names of the four databases with the clinic's data, without the scratch tables: morvane,
/// clientes, finanzas, os.
const QStringList &clinicDatabases();

} // namespace store

/// Whether no other session has the data folder open at this moment. To keep others out, use
/// store::Alone.
bool ProbarExclusivo(Sesion &s);
