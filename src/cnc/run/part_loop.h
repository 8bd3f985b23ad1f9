// The loop over the part files of a run: a pass for the first side, one for the second if it is needed, and
// the cleaning after each part.
#pragma once

#include <cstddef>
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

/// Works on one part, which of those before it knows only the bit that they have left in hand, and the flags
/// of the second side where they stand. False when it has ended the run. A part that the host or the modeller
/// refuses is reported and skipped; a failure of files is thrown on after the cleaning.
bool WorkOnPartAt(RunState& run, const PassWork& steps, std::span<const PartFile> parts, std::size_t part);

/// The same with all parts in order. `what` the work is called while it is shown.
PartsEnd WorkOnParts(RunState& run, const PassWork& steps, std::span<const PartFile> parts,
                     std::string_view what);

/// Reports that a failure of files has ended the run at a part, and removes the part files from there on.
void EndRunAt(RunState& run, std::span<const PartFile> parts, std::size_t part);
/// The same where the user has ended it ahead of the part.
void CancelRunAt(RunState& run, std::span<const PartFile> parts, std::size_t part);

}  // namespace brenvik
