// Whether two folders hold the same clinic after the same day.
#pragma once

#include <QString>

/// Compares what the daily pass writes. The ids of tasks may be assigned in a different order, and
/// of a board line only picture, codes and numbers count.
/// @return the first difference, or ""
QString difference(const QString &oneFolder, const QString &otherFolder);
