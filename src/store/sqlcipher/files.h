// Database files that nobody has open: made, compacted, checked, repaired, told apart from others.
#pragma once

#include "store/engine.h"

namespace sqlcipher
{

/// Makes a new, empty, encrypted file. @throws StoreError 75 when it cannot be written or
/// exists already
void createEmptyFile(const QString &file);

/// Copies a database into a new file without the room that deleted rows have left.
/// @throws StoreError; there is no new file then
void compactFile(const QString &from, const QString &to);

/// Reads a whole file. @return "ok", or its first fault in the engine's words, which may be that it
/// cannot be opened
std::string checkFile(const QString &file);

/// Checks files and puts what can be read of the damaged ones in their place, see Motor::repair.
std::vector<store::Salvage> repairFiles(const QStringList &files, const QString &mark);

store::FileFormat formatOf(const QString &file);

} // namespace sqlcipher
