// Where the data live, and how paths below a folder are found regardless of letter case.
#pragma once

#include <QString>

struct Sesion;

namespace store
{

/// The program folder: KELVARA_HOME if set, else the executable's folder if it is writable, else
/// the user's application data folder, which is created if needed. Ends in a slash.
QString programFolder();

/// The data folder named by the first line of ruta.txt in the program folder, without byte order
/// mark and surrounding blanks; the program folder itself when the file is missing, unreadable or
/// empty. A relative path is taken from the program folder. Ends in a slash.
QString readPath(const QString &programFolder);

/// Whether the program folder has a ruta.txt.
bool hasPath(const QString &programFolder);

/// Writes @p dataFolder to ruta.txt in the program folder.
/// @return false when the file cannot be written
bool writePath(const QString &programFolder, const QString &dataFolder);

/// Joins a folder and a path below it. Each part of the path is matched to an existing entry
/// regardless of letter case; parts that do not exist keep the case given. Takes both kinds of
/// slashes.
QString pathUnder(const QString &folder, const QString &relative);

/// Where the demo clinic of this machine lies, whether there is one or not. Ends in a slash.
QString demoFolder(const Sesion &s);

/// Sets the session's program and data folders.
/// @param folder the data folder given on the command line; "" to read it from ruta.txt. Only
///        ruta.txt makes this machine a terminal (EnRed), when it names a folder other than the
///        program's own
void setDataFolder(Sesion &s, const QString &folder);

} // namespace store

/// The folder of the optional news file: on this platform, the user's local application data.
/// Ends in a slash.
QString CarpetaLocalDeDatos();

/// The folder whose morvane.mdb the open session really writes to: the one in ruta.txt if that is
/// in use, else found by writing a marker row and looking for it in the candidate folders. Ends in
/// a slash; "" when no candidate has the row.
/// @throws StoreError when the marker row cannot be written
QString RutaRealDeDatos(Sesion &s);
