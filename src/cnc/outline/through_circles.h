// Circles that are cut right through the part with a router bit.
#pragma once

#include "cnc/part/run_state.h"

namespace brenvik {

/// Each circle on `ThroughRouteCirclePV` becomes a path on the top plane, as deep as the part and the spoil
/// board's share. Circles that lie on each other are one. If no bit is small enough for a circle, that is
/// reported and the part skipped.
PassOutcome RouteThroughCircles(RunState& run);

/// On a second pass, deletes the holes and circular routes that are as deep as the part: the first pass has
/// cut them through.
void DropCirclesCutThrough(RunState& run);

}  // namespace brenvik
