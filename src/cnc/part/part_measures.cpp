// Sizes are rounded, so that equal parts have equal sizes however they were turned; the corner is exact.
#include "cnc/part/part_measures.h"

#include "base/numbers.h"
#include "cnc/drawing/drawing_walk.h"
#include "cnc/part/run_state.h"

namespace brenvik {

namespace {

constexpr int SizeDecimals = 6;

}  // namespace

Box3 BoxOfPart(const RunState& run) { return LastSolid(*run.part.drawing).GetBoundingBox(); }

void MeasurePart(RunState& run, const Box3& box) {
    run.part.LowestCorner = box.min;
    run.part.ExtentX = RoundHalfEven(box.max.x - box.min.x, SizeDecimals);
    run.part.ExtentY = RoundHalfEven(box.max.y - box.min.y, SizeDecimals);
    run.part.ExtentZ = RoundHalfEven(box.max.z - box.min.z, SizeDecimals);
}

}  // namespace brenvik
