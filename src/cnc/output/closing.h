// The step of a pass that ends the work on a part's drawing; its file and the line in the list follow.
#pragma once

#include "cnc/part/run_state.h"

namespace brenvik {

/// The part data that file names and lists need.
void ReadPartTexts(RunState& run);

/// Part data, the sheet, tongues, and the sweep: what is left are the operations, the top face on Z 0.
PassOutcome ClosePart(RunState& run);

}  // namespace brenvik
