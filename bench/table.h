// How the measures are printed, and the little arithmetic that they need.
#pragma once

#include <QString>
#include <functional>
#include <vector>

/// One row: what was measured, ours, the bare engine's, how they compare, what it is held to.
void Linea(const QString &que, const QString &nuestro, const QString &desnudo,
           const QString &medida, const QString &meta);

QString Numero(double n, int decimales = 2);
double Mediana(std::vector<double> v);
double Milisegundos(const std::function<void()> &f);
