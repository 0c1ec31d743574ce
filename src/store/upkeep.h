// The data folder as a whole: who is in it, copies of it, and files that are damaged.
#pragma once

#include "store/session.h"

namespace store
{

/// Keeps every other session out of the data folder, this process's own included, for what must not
/// happen beside other work: upgrades, repair, restoring. Sessions that start meanwhile wait.
class Alone
{
public:
    explicit Alone(Sesion &s);
    ~Alone();
    Alone(const Alone &) = delete;
    Alone &operator=(const Alone &) = delete;
    /// Whether nobody else was there; else nothing is kept out.
    explicit operator bool() const { return m_presence != nullptr; }

private:
    Lock *m_presence = nullptr;
};

/// Copies morvane, clientes, finanzas and os of the open store into a folder, which is made when it
/// is not there, under the names that they have in a data folder. All copies are of one moment,
/// whoever works meanwhile. Never copy these files in another way while they are open: closing a
/// file drops the locks that this process has on it.
/// @throws StoreError; a copy that was there is replaced by a whole one or stays
void copyDatabases(Sesion &s, const QString &folder);

/// Leaves a mark in the data folder that the next start finds: it reads all files and repairs those
/// that are damaged. To be called when a statement fails with 3343.
void noteDamage(const Sesion &s);
bool isDamageNoted(const Sesion &s);

/// Looks at the beginnings of the four files. @throws StoreError 3343 with what to tell, for one
/// that is plainly something else than a database of this system
void refuseForeignFiles(const Sesion &s);

/// Repairs the files that are damaged, and takes the mark away. The damaged ones stay beside the
/// new ones, under another name. The store must be closed, and the session alone in the folder.
/// @return what was done, to be told; "" when all files are whole
/// @throws StoreError 3343 with what to tell, for a file that is none of ours or that cannot be
///         repaired; all files are as they were then
QString repairDatabases(const Sesion &s);

/// The four files that hold the clinic, without the scratch tables: morvane, clientes, finanzas,
/// os.
const QStringList &clinicDatabases();

} // namespace store

/// Whether no other session has the data folder open. To stay alone, see store::Alone.
bool ProbarExclusivo(Sesion &s);
