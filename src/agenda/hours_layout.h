// Where tasks stand on a day that is drawn by its hours.
#pragma once

#include <QTime>
#include <vector>

namespace agenda
{

/// A stretch of a day in minutes from midnight; `until` is the first that is free again.
struct Section {
    int from = 0;
    int until = 0;
};

/// One of several lanes side by side.
struct Lane {
    int index = 0;
    int total = 1;
};

/// Gives each stretch a lane of its own among all those that overlap it, directly or through
/// others, so that none covers another. The order of the stretches does not matter; among equal
/// ones the first goes to the left.
std::vector<Lane> setSideBySide(const std::vector<Section> &sections);

/// Minutes from midnight; 0 for no time.
int dayMinute(QTime hour);

/// The quarter of an hour that lies nearest, within the day: 00:00 to 23:45.
QTime toQuarter(int minutes);

} // namespace agenda
