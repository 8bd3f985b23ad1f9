// Circles sorted by axis, size and height: bores of the edges, circular routes, rims of holes.
#pragma once

#include "session/ports/host_interface.h"

namespace brenvik {

struct RunState;

/// Makes the work layers of the sorting and puts every circle of the part on the one for its role:
/// `RouteCircleHold` for vertical axes wider than `CircleSize`, `MAXCircleHold` for rims of holes in the top
/// face, `circleHold` for the other levels of holes and for slanted circles, and the target's layer for
/// circles with a horizontal axis. Of circles that lie on each other one stays; circles that only the
/// projection made, and those narrower than 0.002, go. `part` is the box of the solid.
///
/// Reads `CircleSize` by the lenient rule.
void SortCircles(RunState& run, const Box3& part);

}  // namespace brenvik
