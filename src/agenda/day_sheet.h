// The day on one sheet of paper: every quarter of an hour from 06:00 to 22:00.
#pragma once

#include "printing/document.h"
#include "store/session.h"

#include <memory>

namespace agenda
{

/// A quarter of an hour of the sheet.
struct Slot {
    QTime hour;
    QString icon;
    QString text; // patient's name, at most 12 characters; "Multiple tasks"; "" when free
    /// Hour and patient of each task, where there are several.
    std::vector<std::pair<QTime, QString>> detail;
};

/// The slots of a day. @param complete from 06:00; else from the quarter that @p from lies in
/// @return 65 at most, the last at 22:00
std::vector<Slot> daySlots(Sesion &s, bool complete, QDate dia, QTime from);

std::unique_ptr<Documento> daySheet(Sesion &s, bool complete, QDate dia, QTime from);
/// The same, looked at first.
void showAgendaDay(Sesion &s, bool complete, QDate dia, QTime from);

} // namespace agenda

/// Prints the day's sheet, or with @p complete false its update from an hour on. A failure ends the
/// print and is told.
void ImprimirAgendaDia(Sesion &s, bool complete, QDate dia, QTime from);
