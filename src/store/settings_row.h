// Writing single columns of the settings row, which all machines share: the last writer wins.
#pragma once

#include "store/session.h"

/// Stores a value in a column of the settings row at once; the session's row shows it after.
/// @throws ErrorDeAlmacen, also 3265 for a column that is not there
void GuardarAjuste(Sesion &s, std::string_view columna, const Valor &valor);

/// A setting of this machine alone (kelvara.ini in the program folder), for what other terminals
/// must not share: ports, servers reached from here.
QString LeerAjusteDeMaquina(const Sesion &s, const QString &clave, const QString &porDefecto = {});
void GuardarAjusteDeMaquina(const Sesion &s, const QString &clave, const QString &valor);
