// Whether two folders hold the same clinic after the same day.
#pragma once

#include <QString>

/// Compares what the daily pass writes. Identifiers of tasks may be dealt out in another order, and
/// of a board's line only picture, codes and numbers count.
/// @return the first difference, or ""
QString difference(const QString &oneFolder, const QString &otherFolder);
