// What went out today, what waits, and the text of each message.
#pragma once

#include "store/session.h"

/// One row of the outbox.
struct MensajeDelDia {
    int id = 0;
    int tip = 0;
    int medio = 0;
    int ida = 0;
    int artaux = 0;
    QString destinatario;
    QString motivo;
    QString icono; // "" for none
    QString porMedio;
    bool salio = false;
    QString estado;
};

/// The messages of today.
std::vector<MensajeDelDia> MensajesDelDia(Sesion &s);

/// The text that the addressee gets: the mail text when the task may go either way and the client
/// has an address, else that of the task's medium.
QString TextoDeMensaje(Sesion &s, const MensajeDelDia &mensaje);
