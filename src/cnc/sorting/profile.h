// Breaking a part down to curves and sorting them.
#pragma once

#include "cnc/part/run_state.h"

namespace brenvik {

/// Projects the part, breaks it down to curves, and sorts circles, arcs and lines onto the work layers.
PassOutcome SortEdges(RunState& run);

}  // namespace brenvik
