// The way to the STEP library, which is opened when the first STEP file is read or written.
#pragma once

#include "drafting_host/step/step_exchange.h"

namespace brenvik {

/// Throws Failure where the library doesn't lie beside the program, can't be opened, or is of another build.
const step::StepExchange& OpenedStepExchange();

}  // namespace brenvik
