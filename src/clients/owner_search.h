// Looking for an owner among the rows of the client grid.
#pragma once

class ModeloDeGrilla;
class QString;

/// Columns of the client grid.
namespace ColumnaDeCliente
{
inline constexpr int Id = 0;
inline constexpr int Nombre = 1;
inline constexpr int Telefono = 2;
inline constexpr int Idc = 3; // hidden
} // namespace ColumnaDeCliente

/// The row that a text means: by its kind the name, the id or the telephone. A name that none
/// begins with is looked for once more with accents left aside.
/// @return the row, or -1
int BuscarPropietario(const ModeloDeGrilla &clientes, const QString &texto);
