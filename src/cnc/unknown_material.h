// A part whose material isn't in the library.
#pragma once

#include "cnc/run_state.h"

namespace brenvik {

/// Tells that the library hasn't the part's material, and notes the key for the run's report.
void TellUnknownMaterial(const RunState& run);

}  // namespace brenvik
