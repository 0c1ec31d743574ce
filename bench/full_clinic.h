// The full clinic: as many clients and patients as the identifiers allow, with the history of
// years.
#pragma once

#include "store/session.h"

#include <QStringList>

/// What a full clinic holds. The same plan gives the same clinic.
struct PlanDeClinica {
    int clientes = 32767;
    int pacientes = 32767;
    int dosis = 330000;
    int consumos = 40000;
    int deudasAbiertas = 3000;
    int tareas = 150000;
    int lineasDeVenta = 500000;
    quint64 semilla = 1;
    QDate hoy;           // the morning on which the clinic is opened
    QStringList nombres; // of the animals; a list of its own when empty
};

/// Makes the folder with its five databases and fills them: dates lie around the plan's day, so
/// that a start on that morning, one day after the last, finds hundreds of things to do.
/// @throws ErrorDeAlmacen, std::runtime_error
void CrearClinicaLlena(const QString &carpeta, const PlanDeClinica &plan);

/// Names from a column of a CSV file. @param columna its header or its number from 1; empty for the
/// first column whose header speaks of a name
/// @throws std::runtime_error when there is no such file or column
QStringList LeerNombres(const QString &archivo, const QString &columna);

/// A session on a folder, on a day of its own at nine in the morning, where nobody is asked.
struct SesionDeMedida {
    SesionDeMedida(const QString &carpeta, QDate hoy);

    DialogosDesatendidos dialogos;
    SinImpresion impresion;
    Sesion s;
};
