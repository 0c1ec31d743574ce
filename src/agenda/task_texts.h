// What a task is called, pictured and told in words.
#pragma once

#include "store/session.h"

/// Name of what is to be done: the service or product; without one the category of @p artaux; the
/// system's own words for feeding rounds and users' tasks.
QString ConceptoDeTarea(Sesion &s, int tip, qint64 artaux);

/// Why the system writes to a client: the text of one of its own kinds, "" for any other.
QString MotivoDeTarea(const Sesion &s, int tip);

/// "Email communication" and the like, "" for none.
QString MedioEnPalabras(const Sesion &s, int medio);

/// Picture of a concept in the day's list, by the words in its name; "" when none is found.
QString IconoDeAgenda(const Sesion &s, const QString &concepto);
/// The same for the booking list and the day sheet.
QString IconoDeHoja(const Sesion &s, const QString &concepto);

/// What `ida` of a task identifies.
enum class Sujeto { Nadie, Paciente, Cliente, Proveedor, Usuario };
Sujeto SujetoDeTarea(int tip);
