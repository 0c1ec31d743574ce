// Finds an owner or a patient among the rows of the two grids.
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

/// The row that a text means, by name, id or telephone as clients::searchType says. A name without
/// a match is tried again ignoring accents; telephones are compared by their digits.
/// @return the row, or -1
int findOwner(const ui::GridModel &clientes, const QString &typed);

/// The row of the first patient whose name begins with the text, trying again without accents and
/// then with `*` as a wildcard.
/// @return the row, or -1
int findPatient(const ui::GridModel &mascotas, const QString &typed);

} // namespace clients
