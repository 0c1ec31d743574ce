// Failures of the store. They carry the error numbers that the rest of the system knows, whatever
// the engine says.
#pragma once

#include <QString>
#include <stdexcept>

/// Error numbers with a reaction of their own; any other number is shown as it is.
namespace ErrorNum
{
inline constexpr int SinMemoria = 7;
inline constexpr int NombreDeArchivo = 52;
inline constexpr int ArchivoNoEncontrado = 53;
inline constexpr int DiscoLleno = 61;
inline constexpr int SoloLectura = 70;
inline constexpr int RutaODisco = 75;
inline constexpr int NoEnLaColeccion = 3265; // a column or table that the file lacks, asked by name
inline constexpr int Clave = 3022;           // a duplicate where the file allows none
inline constexpr int BaseNoEncontrada = 3024;
inline constexpr int SinRegistroActual = 3021;
inline constexpr int Parametros =
    3061; // a name in a statement that is no column, or a value too few
inline constexpr int Sintaxis = 3075;
inline constexpr int TablaNoEncontrada = 3078;
inline constexpr int Bloqueada = 3260; // another terminal held the file for too long
inline constexpr int BaseDanada = 3343;
inline constexpr int ColumnaExiste = 3380;
inline constexpr int TablaExiste = 3010;
inline constexpr int SinIdentificadores = 3163; // the counter has reached the end of its range
inline constexpr int Interno = 3000;
inline constexpr int Impresora = 482; // the printer does not take the document
inline constexpr int Correo = 32002;  // the mail server does not take the account or a message
} // namespace ErrorNum

/// What the store throws. The description can be shown to a user as it is; the statement never
/// holds the values that were bound to it.
class ErrorDeAlmacen : public std::runtime_error
{
public:
    ErrorDeAlmacen(int numero, const QString &descripcion, const QString &sentencia = {});

    int numero;
    QString descripcion;
    QString sentencia;

    /// The disk, not the data: nothing more can be written, so a long run should stop at once.
    bool EsDelMedio() const;
};
