// The flags of the second side, and the way back to the first.
#include "cnc/part/second_side.h"

#include "cnc/part/run_state.h"

namespace brenvik {

void NeedOtherSide(RunState& run) {
    run.part.NeedSecondSide = true;
    if (run.FirstPass()) run.part.ThroughRouteSeen = true;
}

void NeedOtherSideForBores(RunState& run) { run.part.NeedSecondSide = true; }

void CancelOtherSide(RunState& run) { run.part.NeedSecondSide = run.part.ThroughRouteSeen = false; }

bool NeedsOtherSide(const RunState& run) { return run.part.NeedSecondSide; }

Point3 OnFirstSide(const RunState& run, const Box3& part, const Point3& place) {
    if (run.FirstPass()) return place;
    return {place.x, part.min.y + part.max.y - place.y, part.min.z + part.max.z - place.z};
}

}  // namespace brenvik
