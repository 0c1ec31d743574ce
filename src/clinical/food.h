// When a patient's food counts as running out.
#pragma once

#include "store/session.h"

namespace clinical
{

/// Category of food; every other consumption category runs out at 0.
inline constexpr int FoodCategory = 1;

/// Whether a species has three levels by weight, and not one of its own.
constexpr bool hasThreeLevels(int species) { return species == 1; }
/// One level as UmbralAlimento goes by it: grams, or pounds for a food that comes in pounds. Null
/// where none is set.
/// @param section 0 to 2 by weight, 0 for a species with one level
store::Value foodLevel(Sesion &s, int species, int section);
/// @throws StoreError
void saveFoodLevel(Sesion &s, int species, int section, const store::Value &level);

/// What is told of a patient's food beside it: what is left, daily intake and days left. "" when no
/// stock of food is known.
QString foodText(Sesion &s, int idm);

} // namespace clinical

/// Quantity at or below which a patient's stock is low, in the measure of Consumo.can.
/// Dogs (species 1) go by weight: up to 10, up to 25 and above take the three levels of the
/// settings; any other species has its own level, 0 when none is set.
/// @param peso in the clinic's own unit, kg or lb
double UmbralAlimento(Sesion &s, int species, double peso, int categoria);
