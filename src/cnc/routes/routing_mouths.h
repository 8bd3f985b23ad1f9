// Contours with sides that are no walls: between two recesses of unlike depth the floor of the one ends in
// the air of the other, and how long such a side is says nothing about the bit.
#pragma once

#include "cnc/part/run_state.h"

namespace brenvik {

/// Whether every side of a contour that is too short for any bit has air of the part behind it, at the
/// contour's height and above it. The part's edges count as walls: a groove that opens there is as wide as
/// its mouth.
bool IsTooShortTowardsAirAlone(const RunState& run, const Box3& part, const AcadLWPolyline& contour);

}  // namespace brenvik
