// Whether a patient is boarded, and what the patient's panel says about it.
#pragma once

#include "store/session.h"

namespace boarding
{

/// The three states of the boarding button: not boarded, a guest who can be discharged, a
/// reservation whose guest can be checked in.
enum class Stay { Board, Discharge, Reservation };

struct BoardingState {
    Stay stay = Stay::Board;
    QString text; // for the patient's panel; "" when not boarded
};
/// Looks up the boarding state of a patient.
BoardingState readBoarding(Sesion &s, int idm);
/// The tag of the button: "hos", "alt", "res".
QString labelOf(Stay stay);
/// The picture of the button: "hospedar", "daralta", "reserva".
QString pictureOf(Stay stay);

} // namespace boarding
