// Permissions of files next to the databases, so that every account working on the clinic can use
// them.
#pragma once

#include <QString>

namespace store
{

/// Gives a file the mode and group of @p model as far as the account is allowed to, so that whoever
/// can use the model can use the file. Failures are ignored.
void shareLike(const QString &file, const QString &model);

/// Moves a finished file to @p place, replacing any file there.
/// @throws StoreError 75; both files are then unchanged
void replaceFile(const QString &finished, const QString &place);

} // namespace store
