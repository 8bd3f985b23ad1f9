// Holes that are drilled from above.
#pragma once

#include "cnc/part/run_state.h"

namespace brenvik {

class AcadCircle;
class LevelShapes;

/// Circles that face the top become vertical holes. Skips the part, after a message, where
/// a floor isn't below the top. Holes away from `shapes` aren't tried for material above them.
PassOutcome DrillVertically(RunState& run, const LevelShapes& shapes);

/// Turns a circle on a hole's floor into an operation: on the top plane, with the depth of the floor in its
/// name. `fromTopFace` separates a hole whose rim is on the top face from one in a recess.
void DrillAt(RunState& run, AcadCircle& floor, bool fromTopFace);

}  // namespace brenvik
