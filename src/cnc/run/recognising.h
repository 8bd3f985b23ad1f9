// The recognisers in their order.
#pragma once

#include "cnc/part/run_state.h"

namespace brenvik {

/// Calls the recognisers in their order: routes, horizontal bores, vertical drilling.
PassOutcome Recognise(RunState& run);

}  // namespace brenvik
