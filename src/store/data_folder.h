// Where the data lie, and paths below it found without regard to letter case.
#pragma once

#include <QString>
#include <functional>

struct Sesion;

namespace store
{

/// The program folder: KELVARA_HOME if set, else the folder of the executable if it can be
/// written, else the user's folder for application data. Ends in a slash.
QString programFolder();

/// First line of ruta.txt in the program folder (byte order mark, carriage return and blanks at
/// the ends removed), or the program folder itself when there is no such file, it cannot be read
/// or it names nothing. Ends in a slash.
QString readPath(const QString &programFolder);

/// Whether the program folder has a ruta.txt.
bool hasPath(const QString &programFolder);

/// Writes ruta.txt. @return false when the folder cannot be written
bool writePath(const QString &programFolder, const QString &dataFolder);

/// Joins a folder with a path below it, each part found whatever its letter case; parts that do
/// not exist keep the case given. Accepts both slashes.
QString pathUnder(const QString &folder, const QString &relative);

/// Sets the data folder and EnRed of the session from a folder, or from ruta.txt when empty.
void setDataFolder(Sesion &s, const QString &folder);

/// Holds a folder-wide lock between processes and machines, such as the one on the day's run. It
/// is free again when the holder dies. Blocks until it is taken or @p segundos have passed.
/// @throws StoreError 75 when the folder does not allow it
class FolderLock
{
public:
    /// @param meanwhile called while another one holds it, some twenty times a second
    FolderLock(const QString &folder, const QString &name, int seconds,
               const std::function<void()> &meanwhile = {});
    ~FolderLock();
    FolderLock(const FolderLock &) = delete;
    FolderLock &operator=(const FolderLock &) = delete;
    bool isHeld() const { return m_file >= 0; }

private:
    int m_file = -1;
};

} // namespace store

/// Where the optional news file lies: the user's local application data on this platform.
QString CarpetaLocalDeDatos();

/// The folder whose morvane.mdb the open session really writes to, found by planting a mark and
/// looking for it; "" when none matched. Where ruta.txt named it, what that says. Ends in a slash.
QString RutaRealDeDatos(Sesion &s);
