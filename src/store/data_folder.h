// Where the data lie, and paths below it found without regard to letter case.
#pragma once

#include <QString>

struct Sesion;

namespace store
{

/// The program folder: KELVARA_HOME if set, else the folder of the executable if it can be
/// written, else the user's folder for application data. Ends in a slash.
QString programFolder();

/// First line of ruta.txt in the program folder (byte order mark, carriage return and blanks at
/// the ends removed), or the program folder itself when there is no such file, it cannot be read
/// or it names nothing. A relative path begins at the program folder. Ends in a slash.
QString readPath(const QString &programFolder);

/// Whether the program folder has a ruta.txt.
bool hasPath(const QString &programFolder);

/// Writes ruta.txt. @return false when the folder cannot be written
bool writePath(const QString &programFolder, const QString &dataFolder);

/// Joins a folder with a path below it, each part found whatever its letter case; parts that do
/// not exist keep the case given. Accepts both slashes.
QString pathUnder(const QString &folder, const QString &relative);

/// Where the demo clinic of this machine lies, whether there is one or not. Ends in a slash.
QString demoFolder(const Sesion &s);

/// Sets the data folder of the session from a folder, or from ruta.txt when empty. Only ruta.txt
/// makes this machine a terminal (EnRed), when it names another place than the program's own.
void setDataFolder(Sesion &s, const QString &folder);

} // namespace store

/// Where the optional news file lies: the user's local application data on this platform.
QString CarpetaLocalDeDatos();

/// The folder whose morvane.mdb the open session really writes to, found by planting a mark and
/// looking for it; "" when none matched. Where ruta.txt named it, what that says. Ends in a slash.
QString RutaRealDeDatos(Sesion &s);
