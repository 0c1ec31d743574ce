// The day on paper: every quarter of an hour from 06:00 to 22:00.
#pragma once

#include "printing/document.h"
#include "store/session.h"

#include <memory>

namespace agenda
{

/// A quarter of an hour on the sheet.
struct Slot {
    QTime hour;
    QString icon;
    QString text; // patient's name, at most 12 characters; "Multiple tasks"; "" when free
    /// Hour and patient of each task, when there are several.
    std::vector<std::pair<QTime, QString>> detail;
};

/// The slots of a day.
/// @param complete start at 06:00; otherwise at the quarter of an hour that contains @p from
/// @return 65 at most, the last at 22:00; empty for an update from 22:15 or later
std::vector<Slot> daySlots(Sesion &s, bool complete, QDate dia, QTime from);

/// The day's sheet as a document; the parameters are those of daySlots.
std::unique_ptr<Documento> daySheet(Sesion &s, bool complete, QDate dia, QTime from);
/// Shows the day's sheet in the preview; the parameters are those of daySlots.
void showAgendaDay(Sesion &s, bool complete, QDate dia, QTime from);

} // namespace agenda

/// Prints the day's sheet or, with @p complete false, its update from @p from on. A failure is
/// reported to the user.
void ImprimirAgendaDia(Sesion &s, bool complete, QDate dia, QTime from);
