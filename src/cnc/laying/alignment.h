// Laying a part flat: the first step of a pass.
#pragma once

#include "cnc/part/run_state.h"

namespace brenvik {

/// Lays the part flat on its largest face, turns it by its letters, decides which side is up, and moves its
/// corner to the origin; the part drawing is another one afterwards.
PassOutcome AlignPart(RunState& run);

}  // namespace brenvik
