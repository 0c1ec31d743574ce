// Single settings: columns of the settings row and, beside it, two files for what has no column
// there, one that all machines share and one of this machine's own. The last writer wins.
#pragma once

#include "store/session.h"

namespace store
{

/// Stores a value in a column of the settings row at once; the session's row shows it after.
/// @throws StoreError, also 3265 for a column that is not there
void saveSetting(Sesion &s, std::string_view column, const Value &value);

/// What KgLbs holds: the unit in which the clinic weighs.
namespace weightUnit
{
inline constexpr int Kilos = 1;
inline constexpr int Libras = 2;
} // namespace weightUnit

/// The file of this machine's own settings in the program folder, forms' sizes among them; "" when
/// there is no such folder: an unnamed file is never written.
QString machineFile(const Sesion &s);
/// The same before there is a session. @param programFolder ends in a slash, or is empty: no file
QString machineFileIn(const QString &programFolder);

/// A setting of this machine alone, for what other terminals must not share: ports, paths.
QString readMachineSetting(const Sesion &s, const QString &key, const QString &byDefault = {});
/// @throws StoreError 75 when the file cannot be written
void saveMachineSetting(const Sesion &s, const QString &key, const QString &value);

/// A setting that all terminals share, in a file of the data folder. It is readable by whoever
/// reads the folder: nothing secret goes here.
QString readClinicSetting(const Sesion &s, const QString &key, const QString &byDefault = {});
/// @throws StoreError 75 when the file cannot be written
void saveClinicSetting(const Sesion &s, const QString &key, const QString &value);

} // namespace store
