// Questions about the planned doses of a patient.
#pragma once

#include "store/session.h"

namespace clinical
{

/// What `ArtPlan.si` says of a dose.
namespace doseState
{
inline constexpr int NextCommon = 0; // still to be given
inline constexpr int GivenCommon = 1;
inline constexpr int NextOfPlan = 2; // still to be given
inline constexpr int GivenOfPlan = 3;
inline constexpr int GivenAlone = 4; // no next one was set
} // namespace doseState

inline bool isOpen(int si) { return si == doseState::NextCommon || si == doseState::NextOfPlan; }
/// The same as a condition of a query on ArtPlan.
inline const std::string OpenDoses = "(ArtPlan.si = 0 or ArtPlan.si = 2)";

} // namespace clinical

/// Doses of the category that were due before this one and are still open (`si` 0 or 2). 0 means
/// that the dose is the oldest one open. Only doses due before today are looked at.
int ContarDosisAtrasadas(Sesion &s, int idm, int ida, int dos, int idcat);
