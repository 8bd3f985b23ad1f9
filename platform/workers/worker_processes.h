// A loop spread over copies of this process, which hand texts back.
#pragma once

#include <cstddef>
#include <functional>

#include "session/ports/workers_port.h"

namespace brenvik {

/// Works on the parts in `processes` copies of this process at once, each taking the next one as soon as it
/// is free, and hands the results to `work.take` in the order of the parts. A copy that dies over a part is
/// replaced. What a copy writes to the standard streams is kept from them and makes its part a talked one. No
/// copy outlives this process or this call.
///
/// To be called by the only thread of the process. Throws Failure where not even one copy can be made.
void SpreadOverProcesses(int processes, const SpreadWork& work);

}  // namespace brenvik
