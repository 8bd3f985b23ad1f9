// The last step of a pass on a part.
#pragma once

#include "cnc/part/run_state.h"

namespace brenvik {

/// The part data that file names and lists need.
void ReadPartTexts(RunState& run);

/// Part data, the sheet, tongues, and the sweep: what is left are the operations, the top face on Z 0.
PassOutcome ClosePart(RunState& run);

}  // namespace brenvik
