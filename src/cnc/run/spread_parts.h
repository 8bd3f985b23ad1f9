// The loop over the parts of a run, spread over several processes.
#pragma once

#include <span>

#include "cnc/run/part_files.h"
#include "cnc/run/part_loop.h"
#include "cnc/run/run_template.h"

namespace brenvik {

class WorkersPort;

/// From now on runs are spread over the processes of this port; null: they aren't. Unloading ends it.
void SpreadRuns(WorkersPort* workers);
WorkersPort* WorkersOfRuns();

/// Does the same as `PartLoop::WorkOnAll`, with the same files, lists and messages in the same order. A part
/// whose work asks the user, ends the run, or writes messages of its own is worked on in this process, when
/// its turn has come. One that brings its process down is reported and skipped.
PartsEnd WorkOnPartsSpread(RunState& run, const PassWork& steps, std::span<const PartFile> parts);

}  // namespace brenvik
