// The full clinic: as many clients and patients as the ids allow, with years of history.
#pragma once

#include "store/session.h"

#include <QStringList>

/// What a full clinic contains. The same plan always gives the same clinic.
struct ClinicPlan {
    int clientes = 32767; // the highest 16-bit id
    int patients = 32767;
    int doses = 330000;
    int consumptions = 40000;
    int openDebts = 3000;
    int tasks = 150000;
    int saleLines = 500000;
    quint64 seed = 1;
    QDate hoy;         // morning on which the clinic is opened
    QStringList names; // of the animals; built-in names if empty
};

/// Creates the folder with its five databases and fills them. Dates are relative to the plan's day,
/// so that a start on that morning, one day after the last, finds hundreds of things to do.
/// @throws StoreError, std::runtime_error
void createFullClinic(const QString &folder, const ClinicPlan &plan);

/// Reads names from a column of a CSV file.
/// @param column its header, or its number from 1; empty for the first header that mentions a name
/// @throws std::runtime_error when there is no such file or column
QStringList readNames(const QString &file, const QString &column);

/// A session on a folder that never asks, with its clock at nine in the morning of the given day.
struct MeasureSession {
    /// Opens the folder.
    /// @throws std::runtime_error when it cannot be opened
    MeasureSession(const QString &folder, QDate hoy);

    store::UnattendedDialogs dialogos;
    store::NoPrinting impresion;
    Sesion s;
};
