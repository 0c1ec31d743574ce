// Files beside the databases, for all accounts of a machine that work on the clinic.
#pragma once

#include <QString>

namespace store
{

/// Gives a file the mode and the group of another one, as far as the account may: whoever can work
/// with the one can work with the other.
void shareLike(const QString &file, const QString &model);

/// Puts a finished file in the place of another, or where there is none.
/// @throws StoreError 75; both are as they were then
void replaceFile(const QString &finished, const QString &place);

} // namespace store
