// Looking for an owner or a patient among the rows of the two grids.
#pragma once

namespace ui
{

class GridModel;

} // namespace ui

class QString;

namespace clients
{

/// Columns of the client grid.
namespace ClientColumn
{
inline constexpr int Id = 0;
inline constexpr int Name = 1;
inline constexpr int Telephone = 2;
inline constexpr int Idc = 3; // hidden
} // namespace ClientColumn

/// Columns of the patient grid.
namespace PatientColumn
{
inline constexpr int Name = 0;
inline constexpr int Idm = 3; // hidden
} // namespace PatientColumn

/// The row that a text means: by its kind the name, the id or the telephone. A name that none
/// begins with is looked for once more with accents left aside, a telephone by its digits alone.
/// @return the row, or -1
int findOwner(const ui::GridModel &clientes, const QString &typed);

/// The row of the patient whose name begins with the text; else with accents left aside; else as
/// far as `*` stands for anything. @return the row, or -1
int findPatient(const ui::GridModel &mascotas, const QString &typed);

} // namespace clients
