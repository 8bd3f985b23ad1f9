// When a part needs its other side, and where a place of that side lay on the first one.
#pragma once

#include "session/ports/host_interface.h"

namespace brenvik {

struct RunState;

/// Requests a second side for the part.
void NeedOtherSide(RunState& run);

/// A place of the second pass as the first pass saw it: the part has been turned over about X in between.
Point3 OnFirstSide(const RunState& run, const Box3& part, const Point3& place);

}  // namespace brenvik
