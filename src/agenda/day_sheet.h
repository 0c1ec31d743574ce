// The day on one sheet of paper: every quarter of an hour from 06:00 to 22:00.
#pragma once

#include "printing/document.h"
#include "store/session.h"

#include <memory>

/// A quarter of an hour of the sheet.
struct Casilla {
    QTime hora;
    QString icono;
    QString texto; // patient's name, at most 12 characters; "Multiple tasks"; "" when free
    /// Hour and patient of each task, where there are several.
    std::vector<std::pair<QTime, QString>> detalle;
};

/// The slots of a day. @param completo from 06:00; else from the quarter that @p desde lies in
/// @return 65 at most, the last at 22:00
std::vector<Casilla> CasillasDelDia(Sesion &s, bool completo, QDate dia, QTime desde);

std::unique_ptr<Documento> HojaDelDia(Sesion &s, bool completo, QDate dia, QTime desde);

/// Prints the day's sheet, or with @p completo false its update from an hour on. A failure ends the
/// print and is told.
void ImprimirAgendaDia(Sesion &s, bool completo, QDate dia, QTime desde);
/// The same, looked at first.
void MostrarAgendaDia(Sesion &s, bool completo, QDate dia, QTime desde);
