// The size of the part as it lies.
#pragma once

#include "session/ports/host_interface.h"

namespace brenvik {

struct RunState;

/// The box of the part's solid as it lies now. Fails with 91 where the drawing holds no solid.
Box3 BoxOfPart(const RunState& run);

/// Sets the part's size and its lowest corner, as it lies. `box` is the box of its solid.
void MeasurePart(RunState& run, const Box3& box);

}  // namespace brenvik
