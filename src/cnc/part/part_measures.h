// The size of the part as it lies.
#pragma once

#include "session/ports/host_interface.h"

namespace brenvik {

struct RunState;

/// Takes the part's size and its lowest corner, as it lies: `box` is the box of its solid.
void MeasurePart(RunState& run, const Box3& box);

}  // namespace brenvik
