// Holes that are drilled from above.
#pragma once

namespace brenvik {

class AcadCircle;
struct RunState;
class LevelShapes;

/// Circles that face the top become vertical holes. Sets `DrillSkip` on a failure. Holes away from `shapes`
/// aren't tried for material above them.
void DrillVertically(RunState& run, const LevelShapes& shapes);

/// Makes a hole of a circle that lies on its floor: on the top plane, named as deep as the floor lies.
/// `fromTopFace` tells a hole whose rim lies on the top face from one in a recess.
void DrillAt(RunState& run, AcadCircle& floor, bool fromTopFace);

}  // namespace brenvik
