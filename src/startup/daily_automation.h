// The first start of a day: one pass over all the data that fills the board, the task list and
// the outbox.
#pragma once

#include "store/session.h"

namespace startup
{

/// What follows the daily pass, written elsewhere. An empty step is left out: without a monthly one
/// the month stays due.
struct LaterSteps {
    /// The outbox. @return false when another terminal is sending
    std::function<bool(Sesion &, QDate)> sendMessages;
    std::function<void(Sesion &)> monthlyStep;
};

} // namespace startup

/// The gate: runs the daily pass when the last start was before today, then advances the dates and
/// sends the outbox; runs the monthly step when the number of the month has changed, and sends
/// again. Terminals that start together run the day and the month once: the second one waits for
/// the first. An outbox that was broken off is taken up by the next start of the day.
/// @return whether the daily pass ran here
/// @throws StoreError when the disk or the engine gives up; the day is then run again at the
///         next start
bool IniciarTareas(Sesion &s, const startup::LaterSteps &steps = {});

/// The daily pass alone: nineteen passes in a fixed order, written as one commit. A statement that
/// fails is passed over, logged and told at the end; a disk that fails ends the run with nothing
/// written. What there is to print is printed, and asked for, when all is written.
void TareasDeInicio(Sesion &s);
