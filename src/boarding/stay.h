// Whether a patient is in a kennel, and what is told of it beside the patient.
#pragma once

#include "store/session.h"

namespace boarding
{

/// The three states of the boarding button: not boarded, a guest to be discharged, a reservation
/// that may arrive.
enum class Stay { Board, Discharge, Reservation };

struct BoardingState {
    Stay stay = Stay::Board;
    QString text; // for the patient's panel; "" when not boarded
};
BoardingState readBoarding(Sesion &s, int idm);
/// The tag of the button: "hos", "alt", "res".
QString labelOf(Stay stay);
/// The picture of the button: "hospedar", "daralta", "reserva".
QString pictureOf(Stay stay);

} // namespace boarding
