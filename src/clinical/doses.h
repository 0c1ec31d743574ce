// Questions about the planned doses of a patient.
#pragma once

#include "store/session.h"

namespace clinical
{

/// The values of `ArtPlan.si`, the state of a dose.
namespace doseState
{
inline constexpr int NextCommon = 0; // still open
inline constexpr int GivenCommon = 1;
inline constexpr int NextOfPlan = 2; // still open
inline constexpr int GivenOfPlan = 3;
inline constexpr int GivenAlone = 4; // given, with no next dose planned
} // namespace doseState

/// Whether a dose in this state is still to be given.
inline bool isOpen(int si) { return si == doseState::NextCommon || si == doseState::NextOfPlan; }
/// isOpen as a condition for queries on ArtPlan.
inline const std::string OpenDoses = "(ArtPlan.si = 0 or ArtPlan.si = 2)";

} // namespace clinical

/// Counts the patient's open doses (`si` 0 or 2) of the category that were due before this dose; 0
/// means that it is the oldest one open. Only doses due before today count.
int ContarDosisAtrasadas(Sesion &s, int idm, int ida, int dos, int idcat);
