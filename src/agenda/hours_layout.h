// Placing the tasks of a day that is drawn by the hour.
#pragma once

#include <QTime>
#include <vector>

namespace agenda
{

/// A section of a day in minutes from midnight; `until` is the first minute after it.
struct Section {
    int from = 0;
    int until = 0;
};

/// One of several lanes side by side.
struct Lane {
    int index = 0;
    int total = 1;
};

/// Gives each section a lane such that sections which overlap, directly or through others, do not
/// cover each other. The sections may come in any order; of equal ones the first goes to the left.
/// @return one lane per section, in the same order
std::vector<Lane> setSideBySide(const std::vector<Section> &sections);

/// Minutes from midnight; 0 for an invalid time.
int dayMinute(QTime hour);

/// The nearest quarter of an hour within the day, 00:00 to 23:45.
/// @param minutes from midnight
QTime toQuarter(int minutes);

} // namespace agenda
