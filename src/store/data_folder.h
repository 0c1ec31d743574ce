// Where the data lie, and paths below it found without regard to letter case.
#pragma once

#include <QString>
#include <functional>

struct Sesion;

/// The program folder: KELVARA_HOME if set, else the folder of the executable if it can be
/// written, else the user's folder for application data. Ends in a slash.
QString CarpetaDePrograma();

/// Where the optional news file lies: the user's local application data on this platform.
QString CarpetaLocalDeDatos();

/// First line of ruta.txt in the program folder (byte order mark, carriage return and blanks at
/// the ends removed), or the program folder itself when there is no such file, it cannot be read
/// or it names nothing. Ends in a slash.
QString LeerRuta(const QString &carpetaDePrograma);

/// Whether the program folder has a ruta.txt.
bool TieneRuta(const QString &carpetaDePrograma);

/// Writes ruta.txt. @return false when the folder cannot be written
bool EscribirRuta(const QString &carpetaDePrograma, const QString &carpetaDeDatos);

/// Joins a folder with a path below it, each part found whatever its letter case; parts that do
/// not exist keep the case given. Accepts both slashes.
QString RutaBajo(const QString &carpeta, const QString &relativa);

/// Sets the data folder and EnRed of the session from a folder, or from ruta.txt when empty.
void FijarCarpetaDeDatos(Sesion &s, const QString &carpeta);

/// The folder whose morvane.mdb the open session really writes to, found by planting a mark and
/// looking for it; "" when none matched. Where ruta.txt named it, what that says. Ends in a slash.
QString RutaRealDeDatos(Sesion &s);

/// Holds a folder-wide lock between processes and machines, such as the one on the day's run. It
/// is free again when the holder dies. Blocks until it is taken or @p segundos have passed.
/// @throws ErrorDeAlmacen 75 when the folder does not allow it
class BloqueoDeCarpeta
{
public:
    /// @param mientras called while another one holds it, some twenty times a second
    BloqueoDeCarpeta(const QString &carpeta, const QString &nombre, int segundos,
                     const std::function<void()> &mientras = {});
    ~BloqueoDeCarpeta();
    BloqueoDeCarpeta(const BloqueoDeCarpeta &) = delete;
    BloqueoDeCarpeta &operator=(const BloqueoDeCarpeta &) = delete;
    bool Tomado() const { return m_archivo >= 0; }

private:
    int m_archivo = -1;
};
