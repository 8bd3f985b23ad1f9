// How far a part reaches to its sides.
#pragma once

#include <vector>

#include "session/ports/section_port.h"

namespace brenvik {

/// Closed ways around all that stands at any height, windows filled: together they run at least once around
/// each place of it. `unit` is one millimetre in units of the part. Throws Failure where the solid can't be
/// cut.
std::vector<PlanSide> SilhouetteOf(const SolidSections& part, double unit);

}  // namespace brenvik
