// The day's list of tasks and what can be done with them.
#pragma once

#include "store/session.h"

/// One task of a day as the list and the hours show it.
struct TareaDelDia {
    int id = 0;
    int tip = 0;
    int ida = 0;
    QDate dia;
    QDate creada;
    QTime hor; // invalid without one
    QTime ala;
    int minutos = 0;  // that it takes
    bool est = false; // done
    QString concepto;
    QString icono;
    QString des;
    QString paciente;
    QString cliente;
    QString telefonos;
    QString detalle; // hour and all of the above, lines parted by line feeds
};

/// Appointments, users' tasks and feeding rounds of a day, by hour.
std::vector<TareaDelDia> TareasDelDia(Sesion &s, QDate dia);
/// Appointments alone, as the booking dialog lists them.
std::vector<TareaDelDia> TurnosDelDia(Sesion &s, QDate dia);

/// One communication that the system decided on today.
struct TareaDeKelvara {
    QString motivo;
    QString destinatario; // "Cliente: " or "Mascota: " and the name
    QString medio;
    bool realizada = false; // it has gone out
};
std::vector<TareaDeKelvara> TareasDeKelvara(Sesion &s);

/// Whether the user may delay, move or delete tasks; a Common user is told that he may not.
bool PuedeMoverTareas(Sesion &s);

/// Selected rows in the direction of the selection: it ends at the current one.
/// @param filas in ascending order
QList<int> EnSuSentido(QList<int> filas, int actual);

// What leaves today takes its alarm along, and what comes to today brings it.

/// Asks, and puts the tasks on another day. @return whether they were moved
bool PasarTareas(Sesion &s, const QList<int> &ids, QDate dia);
/// Puts a task at another hour, of another day perhaps; nothing is asked: the hand has shown it.
/// The alarm keeps its own time; an invalid hour leaves the task's as it is.
/// @return whether it was moved
bool MoverTarea(Sesion &s, int id, QDate dia, QTime hora);
/// Asks, and deletes the tasks. @return whether they are gone
bool EliminarTareas(Sesion &s, const QList<int> &ids);
/// Marks a task as done, or as open again, and with it the first alarm of today at the same time
/// for the same kind. @return whether it is done now
bool AlternarRealizada(Sesion &s, int id);
