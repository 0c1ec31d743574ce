// Operations on database files that no one has open: creating, compacting, checking, repairing and
// recognising them.
#pragma once

#include "store/engine.h"

namespace sqlcipher
{

/// Creates an empty encrypted file.
/// @throws StoreError 75 when it cannot be written or already exists
void createEmptyFile(const QString &file);

/// Copies a database to a new file without the space left by deleted rows.
/// @throws StoreError 75 when @p to already exists, or any other; no new file is left behind
void compactFile(const QString &from, const QString &to);

/// Reads a whole file. @return "ok", or its first fault in the engine's words, including that it
/// cannot be opened
std::string checkFile(const QString &file);

/// Checks files and replaces the damaged ones by what can still be read of them, see Motor::repair.
std::vector<store::Salvage> repairFiles(const QStringList &files, const QString &mark);

/// Recognises a file by its first bytes, see Motor::formatOf. Unknown when it cannot be read.
store::FileFormat formatOf(const QString &file);

} // namespace sqlcipher
