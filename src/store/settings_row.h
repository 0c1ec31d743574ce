// Individual settings: columns of the settings row, and two files for what has no column there, one
// shared by all machines and one local to this machine. The last writer wins.
#pragma once

#include "store/session.h"

namespace store
{

/// Writes a value to a column of the settings row at once; the session's copy of the row shows it.
/// @throws StoreError 3265 for an unknown column, or what the column refuses
void saveSetting(Sesion &s, std::string_view column, const Value &value);

/// Values of the setting KgLbs: the unit in which the clinic weighs.
namespace weightUnit
{
inline constexpr int Kilos = 1;
inline constexpr int Libras = 2;
} // namespace weightUnit

/// Path of the file with this machine's settings, such as window sizes, in the program folder; ""
/// while the session has no program folder, and then nothing is saved.
QString machineFile(const Sesion &s);
/// The same before there is a session. @param programFolder ends in a slash, or is empty: no file
QString machineFileIn(const QString &programFolder);

/// Reads a setting of this machine, for what terminals must not share: ports, paths.
/// @return @p byDefault when it was never saved
QString readMachineSetting(const Sesion &s, const QString &key, const QString &byDefault = {});
/// Saves a setting of this machine. @throws StoreError 75 when the file cannot be written
void saveMachineSetting(const Sesion &s, const QString &key, const QString &value);

/// Reads a setting shared by all terminals, from a file in the data folder. Everyone with access to
/// the folder can read it, so it must not hold secrets.
/// @return @p byDefault when it was never saved
QString readClinicSetting(const Sesion &s, const QString &key, const QString &byDefault = {});
/// Saves a setting shared by all terminals. @throws StoreError 75 when the file cannot be written
void saveClinicSetting(const Sesion &s, const QString &key, const QString &value);

} // namespace store
