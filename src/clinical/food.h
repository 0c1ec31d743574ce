// When a patient's food counts as running out.
#pragma once

#include "store/session.h"

/// Category of food; every other consumption category runs out at 0.
inline constexpr int CategoriaAlimento = 1;

/// Quantity at or below which a patient's stock is low, in the measure of Consumo.can.
/// Dogs (species 1) go by weight: up to 10, up to 25 and above take the three levels of the
/// settings; any other species has its own level, 0 when none is set.
/// @param peso in the clinic's own unit, kg or lb
double UmbralAlimento(Sesion &s, int especie, double peso, int categoria);

/// Whether a species has three levels by weight, and not one of its own.
constexpr bool TieneTresNiveles(int especie) { return especie == 1; }
/// One level as UmbralAlimento goes by it: grams, or pounds for a food that comes in pounds. Null
/// where none is set.
/// @param tramo 0 to 2 by weight, 0 for a species with one level
Valor NivelDeAlimento(Sesion &s, int especie, int tramo);
/// @throws ErrorDeAlmacen
void GuardarNivelDeAlimento(Sesion &s, int especie, int tramo, const Valor &nivel);

/// What is told of a patient's food beside it: what is left, daily intake and days left. "" when no
/// stock of food is known.
QString TextoDeAlimento(Sesion &s, int idm);
