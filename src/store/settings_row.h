// Writing single columns of the settings row, which all machines share: the last writer wins.
#pragma once

#include "store/session.h"

/// Stores a value in a column of the settings row at once; the session's row shows it after.
/// @throws ErrorDeAlmacen, also 3265 for a column that is not there
void GuardarAjuste(Sesion &s, std::string_view columna, const Valor &valor);

/// What KgLbs holds: the unit in which the clinic weighs.
namespace UnidadDePeso
{
inline constexpr int Kilos = 1;
inline constexpr int Libras = 2;
} // namespace UnidadDePeso

/// The file of this machine's own settings in the program folder, forms' sizes among them; "" when
/// there is no such folder: an unnamed file is never written.
QString ArchivoDeMaquina(const Sesion &s);

/// A setting of this machine alone, for what other terminals must not share: ports, servers reached
/// from here.
QString LeerAjusteDeMaquina(const Sesion &s, const QString &clave, const QString &porDefecto = {});
/// @throws ErrorDeAlmacen 75 when the file cannot be written
void GuardarAjusteDeMaquina(const Sesion &s, const QString &clave, const QString &valor);
