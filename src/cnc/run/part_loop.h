// The loop over the part files of a run: a pass for the first side, one for the second if it is needed, and
// the cleaning after each part.
#pragma once

#include <span>

#include "cnc/run/part_files.h"
#include "cnc/run/run_template.h"

namespace brenvik {

/// Works on the parts in order. Returns false when a part has ended the run: its drawing stays open then, and
/// its files are kept. A part that the host or the modeller refuses is reported and skipped; a failure of
/// files is thrown on after the cleaning.
bool WorkOnParts(RunState& run, const PassWork& steps, std::span<const PartFile> parts);

}  // namespace brenvik
