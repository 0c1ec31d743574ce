// Doses to be talked about with clients, and the notes kept on them.
#pragma once

#include "store/session.h"

/// The four lists that the board leads to, by its click codes.
enum class GrupoDeAvisos {
    PerdidasSinServicio = 18, // from the start before the last one to yesterday
    PerdidasConServicio = 19,
    DeHoySinServicio = 20, // from the day after it to today
    DeHoyConServicio = 21,
};

struct AvisoPlanificado {
    QString clave; // of the note
    int idm = 0;
    int idc = 0;
    int ida = 0; // product
    QString paciente;
    QString propietario;
    QString producto;
    QString telefonos;
    QDate vence;
    QString nota;
};

/// Open doses of a group, by the patient's name; without the deceased.
std::vector<AvisoPlanificado> AvisosDe(Sesion &s, GrupoDeAvisos grupo);
/// What to write to the owner: the mail text of dose reminders.
QString TextoDeAviso(Sesion &s, const AvisoPlanificado &aviso);
/// Keeps a note; an empty one is forgotten.
void GuardarNota(Sesion &s, const QString &clave, const QString &texto);
