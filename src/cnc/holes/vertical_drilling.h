// Holes that are drilled from above.
#pragma once

namespace brenvik {

struct RunState;
class LevelShapes;

/// Circles that face the top become vertical holes. Sets `DrillSkip` on a failure. Holes away from `shapes`
/// aren't tried for material above them.
void DrillVertically(RunState& run, const LevelShapes& shapes);

}  // namespace brenvik
