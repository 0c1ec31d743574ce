// Whether a patient is in a kennel, and what is told of it beside the patient.
#pragma once

#include "store/session.h"

/// The three states of the boarding button: not boarded, a guest to be discharged, a reservation
/// that may arrive.
enum class Estancia { Hospedar, DarAlta, Reserva };

struct EstadoDeHospedaje {
    Estancia estancia = Estancia::Hospedar;
    QString texto; // for the patient's panel; "" when not boarded
};
EstadoDeHospedaje LeerHospedaje(Sesion &s, int idm);
/// The tag of the button: "hos", "alt", "res".
QString EtiquetaDe(Estancia estancia);
/// The picture of the button: "hospedar", "daralta", "reserva".
QString DibujoDe(Estancia estancia);
