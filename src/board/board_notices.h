// What the board says beside the lines of the day: that something went wrong, and in a new clinic
// what to do first. None of it is stored.
#pragma once

#include "board/navigation.h"

namespace board
{

/// A line that leads to where it can be dealt with.
struct BoardNotice {
    QString message;
    QString picture; // its name, "" for none
    Target target;   // none where nothing can be done
    bool done = false;
};

/// What must be seen before the day's lines: the day's pass did not run, failures were noted.
/// @throws StoreError
QList<BoardNotice> warnings(Sesion &s);

/// Whether nothing was entered yet: the clinic has no client.
/// @throws StoreError
bool isNewClinic(Sesion &s);

/// The first steps of a new clinic, those that are done marked as such; empty once all are.
/// @throws StoreError
QList<BoardNotice> firstSteps(Sesion &s);

} // namespace board
