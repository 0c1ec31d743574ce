// Looking for an owner or a patient among the rows of the two grids.
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

/// Columns of the patient grid.
namespace ColumnaDePaciente
{
inline constexpr int Nombre = 0;
inline constexpr int Idm = 3; // hidden
} // namespace ColumnaDePaciente

/// The row that a text means: by its kind the name, the id or the telephone. A name that none
/// begins with is looked for once more with accents left aside, a telephone by its digits alone.
/// @return the row, or -1
int BuscarPropietario(const ModeloDeGrilla &clientes, const QString &texto);

/// The row of the patient whose name begins with the text; else with accents left aside; else as
/// far as `*` stands for anything. @return the row, or -1
int BuscarMascota(const ModeloDeGrilla &mascotas, const QString &texto);
