// When a patient's food runs low, and what to say about it.
#pragma once

#include "store/session.h"

namespace clinical
{

/// Category of food. Stock of any other category runs low only at 0.
inline constexpr int FoodCategory = 1;

/// Whether a species has three levels by weight rather than a single one; only dogs (1) do.
constexpr bool hasThreeLevels(int species) { return species == 1; }
/// One of the levels that UmbralAlimento uses: in grams, or in pounds for food sold in pounds.
/// Null when it is not set.
/// @param section 0 to 2, from the lightest to the heaviest; 0 for a species with one level
store::Value foodLevel(Sesion &s, int species, int section);
/// Stores a level; the parameters are those of foodLevel.
/// @throws StoreError when it cannot be written
void saveFoodLevel(Sesion &s, int species, int section, const store::Value &level);

/// What the patient's panel says about its food: stock, daily intake, days left and the day on
/// which it runs out. "" when no stock of food is recorded.
QString foodText(Sesion &s, int idm);

} // namespace clinical

/// The quantity at or below which a patient's stock is low, in the unit of Consumo.can. Dogs
/// (species 1) have three levels in the settings: for a weight up to 10, up to 25 and above. Any
/// other species has a single level, 0 when it is not set.
/// @param peso in the clinic's unit, kg or lb
double UmbralAlimento(Sesion &s, int species, double peso, int categoria);
