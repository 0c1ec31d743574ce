// How the measures are printed, and the little arithmetic that they need.
#pragma once

#include <QString>
#include <functional>
#include <vector>

/// One row: what was measured, ours, the bare engine's, how they compare, what it is held to.
void line(const QString &what, const QString &our, const QString &bare, const QString &measure,
          const QString &goal);

QString numberOf(double n, int decimals = 2);
double median(std::vector<double> v);
double milliseconds(const std::function<void()> &f);
