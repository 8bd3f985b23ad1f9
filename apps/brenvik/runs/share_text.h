// What a share of a run leaves in its folder beside its files: which job it is of, and what came of its
// parts.
#pragma once

#include <optional>
#include <string>

#include "cnc/run/run_share.h"
#include "runs/share_job.h"

namespace brenvik {
class FileRoots;
}

namespace brenvik::app {

struct Share {
    std::size_t number = 1, of = 1;
    ShareJob job;
    SharedParts done;
};

/// Writes the text of a share into the output folder of the run, whole or not at all.
void WriteShare(FileRoots& files, const Share& share);
/// Reads that of a folder. Throws CommandError where there is none, or one that isn't as it was written.
Share ReadShare(const std::string& folder);
/// The same, where there is one that can be read.
std::optional<Share> ShareIfAny(const std::string& folder);

}  // namespace brenvik::app
