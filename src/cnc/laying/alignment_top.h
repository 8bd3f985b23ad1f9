// Which side of a squared part is up: the one with more edges and holes; of two equal ones the narrower. In
// any case it is the one opposite the largest flat face, which rests on the machine's table.
#pragma once

#include "session/ports/host_interface.h"

namespace brenvik {

/// How much lies on the highest and on the lowest level of the part's lines.
struct LevelCounts {
    int TopEdges = 0, TopCircles = 0, BottomEdges = 0, BottomCircles = 0;
};
/// Counts the lines and circles at the highest and at the lowest Z of any line in the drawing.
LevelCounts CountOnLevels(AcadDocument& drawing);

/// Whether the lower side of the part is narrower along Y than the upper one, by the lines that run along X.
bool LowerSideIsNarrower(AcadDocument& drawing);

/// Whether the largest flat face, kept on `RegionCopy` with its area rounded to 6 decimals, lies above the
/// part's lowest level. An upright face reaches down to that level, and then this is no reason to turn the
/// part over.
bool LargestFaceLiesAbove(AcadDocument& drawing, const AcadEntity& solid, double LargestArea);

/// Brings the right side up; turns all at most twice.
void BringTopUp(AcadDocument& drawing, const AcadEntity& solid, double LargestArea);

}  // namespace brenvik
