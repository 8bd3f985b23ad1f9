// The last step of recognition: whatever floors of a part the recognisers have left gets its paths and holes.
#pragma once

#include "cnc/part/run_state.h"

namespace brenvik {

/// Compares the part with what the operations in its drawing, and those of its first side, take away, and
/// adds what is missing from above, named as the recognisers name it. Asks for the second side where
/// something is missing from below. A path that no bit fits, and a part whose sections can't be taken, are
/// left to the proof.
PassOutcome ClearRest(RunState& run);

}  // namespace brenvik
