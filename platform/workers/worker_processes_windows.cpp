// No process can be copied here, and nobody asks for it: `IsAloneInItsProcess` says so.
#include "base/invariant.h"
#include "workers/worker_processes.h"

namespace brenvik {

void SpreadOverProcesses(int, const SpreadWork&) { Invariant(false, "a process that can be copied"); }

}  // namespace brenvik
