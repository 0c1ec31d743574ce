// The full clinic: as many clients and patients as the identifiers allow, with the history of
// years.
#pragma once

#include "store/session.h"

#include <QStringList>

/// What a full clinic holds. The same plan gives the same clinic.
struct ClinicPlan {
    int clientes = 32767;
    int patients = 32767;
    int doses = 330000;
    int consumptions = 40000;
    int openDebts = 3000;
    int tasks = 150000;
    int saleLines = 500000;
    quint64 seed = 1;
    QDate hoy;         // the morning on which the clinic is opened
    QStringList names; // of the animals; a list of its own when empty
};

/// Makes the folder with its five databases and fills them: dates lie around the plan's day, so
/// that a start on that morning, one day after the last, finds hundreds of things to do.
/// @throws StoreError, std::runtime_error
void createFullClinic(const QString &folder, const ClinicPlan &plan);

/// Names from a column of a CSV file. @param column its header or its number from 1; empty for the
/// first column whose header speaks of a name
/// @throws std::runtime_error when there is no such file or column
QStringList readNames(const QString &file, const QString &column);

/// A session on a folder, on a day of its own at nine in the morning, where nobody is asked.
struct MeasureSession {
    MeasureSession(const QString &folder, QDate hoy);

    store::UnattendedDialogs dialogos;
    store::NoPrinting impresion;
    Sesion s;
};
