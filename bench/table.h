// Prints the table of results, and the arithmetic for it.
#pragma once

#include <QString>
#include <functional>
#include <vector>

/// Prints one row: what was measured, our figure, the bare engine's, how they compare, and the
/// target.
void line(const QString &what, const QString &our, const QString &bare, const QString &measure,
          const QString &goal);

/// A number with a fixed count of decimals.
QString numberOf(double n, int decimals = 2);
/// The median; @p v must not be empty.
double median(std::vector<double> v);
/// How long a call takes.
double milliseconds(const std::function<void()> &f);
