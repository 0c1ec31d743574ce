// The day's list of tasks and what can be done with them.
#pragma once

#include "store/session.h"

#include <QHash>

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

    bool operator==(const TareaDelDia &) const = default;
};

/// What tasks are about, looked up once, and anew when somebody has written one of those tables.
/// Whoever reads days again and again keeps one.
class Fichero
{
public:
    struct Paciente {
        QString nom, cliente, telefonos;
    };
    struct Concepto {
        QString nom, icono;
        int minutos = 0;
    };
    /// To be called before the tasks of a day are read.
    void PonerAlDia(Sesion &s);
    const Paciente &DePaciente(Sesion &s, int idm);
    const Concepto &DeConcepto(Sesion &s, int tip, qint64 artaux);

private:
    QList<qint64> m_versiones; // of the tables
    QHash<int, Paciente> m_pacientes;
    QHash<std::pair<int, qint64>, Concepto> m_conceptos;
};

/// Appointments, users' tasks and feeding rounds of a day, by hour.
std::vector<TareaDelDia> TareasDelDia(Sesion &s, QDate dia, Fichero &fichero);
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

// A task that is open takes its alarm along: what leaves today silences it, what comes to today
// brings it.

/// Where a task goes. An invalid hour leaves it the one that it has, or none.
struct Destino {
    int id = 0;
    QDate dia;
    QTime hora;
};
/// Where a task stood. An invalid hour or alarm is none.
struct Sitio {
    int id = 0;
    QDate dia;
    QTime hor;
    QTime ala;
};
/// Puts tasks at other hours, of other days perhaps; nothing is asked: the hand has shown it. Their
/// alarms stay as far from the hour as they were.
/// @return where those that were moved stood before; none when the user may not, or they are gone
std::vector<Sitio> MoverTareas(Sesion &s, const std::vector<Destino> &destinos);
/// Asks, and puts the tasks on another day. @return as MoverTareas; nullopt when it was not to be
std::optional<std::vector<Sitio>> PasarTareas(Sesion &s, const QList<int> &ids, QDate dia);
/// Puts them back where they stood, without an hour too. @return whether any was there still
bool DevolverTareas(Sesion &s, const std::vector<Sitio> &sitios);
/// Asks, and deletes the tasks. @return whether they are gone
bool EliminarTareas(Sesion &s, const QList<int> &ids);
/// Marks a task as done, or as open again, and with it the first alarm of today at the same time
/// for the same kind, whosever it is, on purpose. @return whether it is done now
bool AlternarRealizada(Sesion &s, int id);
