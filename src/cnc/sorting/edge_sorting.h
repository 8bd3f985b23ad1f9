// Sorts arcs and lines by height: those inside the part may become a route, the rest the outline.
#pragma once

#include "session/ports/host_interface.h"

namespace brenvik {

struct RunState;

/// Puts arcs that begin strictly between underside and top on `BrenvikExplode` and the others on `arcPV`, but
/// for those whose layer has a role of its own. Of the lines on `BrenvikExplode`, those with a vertical
/// normal look up afterwards, and others that begin inside the part go: they are the edges of upright
/// walls, which bring each line of a floor a second time. `part` is the box of the solid.
void SortArcsAndLines(RunState& run, const Box3& part);

}  // namespace brenvik
