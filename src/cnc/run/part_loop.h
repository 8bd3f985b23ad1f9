// The loop over the part files of a run: a pass for the first side, one for the second if it is needed, and
// the cleaning after each part.
#pragma once

#include <span>
#include <string_view>

#include "cnc/run/part_files.h"
#include "cnc/run/run_template.h"

namespace brenvik {

enum class PartsEnd {
    Whole,        ///< Every part has had its turn.
    EndedByPart,  ///< Its drawing stays open, and its files are kept.
    Cancelled,    ///< By the user, between two parts: the part files not worked on are gone.
};

/// Works on the parts in order. A part that the host or the modeller refuses is reported and skipped; a
/// failure of files is thrown on after the cleaning. `what` the work is called while it is shown.
PartsEnd WorkOnParts(RunState& run, const PassWork& steps, std::span<const PartFile> parts,
                     std::string_view what);

}  // namespace brenvik
