// Floors of blind holes that another hole has bitten into.
#pragma once

#include "session/ports/host_interface.h"

namespace brenvik {

struct RunState;

/// Where an edge bore runs through the floor of a blind hole, as the bolt of a fitting does through its
/// housing, the floor's rim is left in arcs, and lines cross the floor. They only show that the hole ends
/// there: arcs that share axis and diameter with a whole rim of the part become a whole circle on
/// `circleHold`, and what lies within it at its height is deleted. A contour that leaves the circle, such as
/// a pocket's with a hole in its corner, stays as it is. `part` is the box of the solid.
void CompleteHoleFloors(RunState& run, const Box3& part);

}  // namespace brenvik
