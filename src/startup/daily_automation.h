// What happens on the first start of a day: one pass over all the data fills the board, the task
// list and the outbox.
#pragma once

#include "store/session.h"

namespace startup
{

/// What runs after the daily pass; implemented elsewhere. An empty step is skipped, and a skipped
/// monthly step leaves the month due.
struct LaterSteps {
    /// Sends the outbox of a day. @return false when another terminal is already sending
    std::function<bool(Sesion &, QDate)> sendMessages;
    /// The work that is done once a month.
    std::function<void(Sesion &)> monthlyStep;
};

} // namespace startup

/// Decides what this start has to do. Runs the daily pass when the last start was before today,
/// then advances the dates and sends the outbox; runs the monthly step when the month number has
/// changed, and sends again. Terminals that start together run the day and the month only once:
/// the second one waits for the first. If sending was interrupted, the next start of the same day
/// resumes it.
/// @return whether the daily pass ran here
/// @throws StoreError when the disk or the engine fails; the day then runs again at the next start
bool IniciarTareas(Sesion &s, const startup::LaterSteps &steps = {});

/// The daily pass alone: nineteen passes in a fixed order, written as one commit. A statement that
/// fails is skipped, logged and reported at the end. Questions and printouts come only once
/// everything is written.
/// @throws StoreError when the disk fails; nothing is written then
void TareasDeInicio(Sesion &s);
