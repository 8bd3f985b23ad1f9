// The outside profile of a part, and all that is cut through it.
#pragma once

#include "cnc/part/run_state.h"

namespace brenvik {

/// The outside profile, the cut-outs, circular through routes, the conversion of pockets, and the outline as
/// wide as the part is anywhere in its height. Skips a part whose bit nobody chooses.
PassOutcome MakeOutline(RunState& run);

}  // namespace brenvik
