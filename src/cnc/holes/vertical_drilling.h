// Holes that are drilled from above.
#pragma once

#include "cnc/part/run_state.h"

namespace brenvik {

class AcadCircle;
class LevelShapes;

/// Circles that face the top become vertical holes. Skips the part, after a message, where
/// a floor isn't below the top. Holes away from `shapes` aren't tried for material above them.
PassOutcome DrillVertically(RunState& run, const LevelShapes& shapes);

/// Makes a hole of a circle that lies on its floor: on the top plane, named as deep as the floor lies.
/// `fromTopFace` tells a hole whose rim lies on the top face from one in a recess.
void DrillAt(RunState& run, AcadCircle& floor, bool fromTopFace);

}  // namespace brenvik
