// A run over several machines: each works on a share of its parts, and one run takes what came of them.
#pragma once

#include <cstddef>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include "cnc/run/part_files.h"
#include "cnc/run/run_template.h"
#include "session/ports/workers_port.h"

namespace brenvik {

/// What came of a part in its share.
struct SharedPart {
    std::size_t part = 0;  ///< Among the parts of the run.
    /// The fingerprint of the drawing that was worked on.
    std::string drawing;
    /// As a worker gives it to a run: one that isn't done is left to the run that takes the shares.
    WorkerEnd end;
    /// The fingerprints of its files, in the order of the result.
    std::vector<std::string> digests;
};

/// What came of a share, in the order of the parts.
struct SharedParts {
    std::size_t partsOfRun = 0;
    std::vector<SharedPart> parts;
};

/// The share that a run is to do, in place of all parts.
struct RunShare {
    std::size_t number = 1, of = 1;  ///< From 1.
    WorkersPort* workers = nullptr;
    /// The parts have had their turn; the output folders are claimed still.
    std::function<void(const SharedParts&)> keep;
};

/// From now on runs do this share alone, and write no work list; null: all of their parts. Unloading ends it.
void RunOnlyShare(const RunShare* share);
const RunShare* ShareOfRuns();

/// Which share each part falls to, from 0: the heaviest part first, each to the share that has the least so
/// far, so that all of them are done at about the same time.
std::vector<std::size_t> DealParts(std::span<const std::size_t> weights, std::size_t shares);

/// Works on the parts of the share and keeps what came of them. Files, boxes and reports are those of its
/// parts; the drawings of all parts are gone then.
void WorkOnShare(RunState& run, const PassWork& steps, std::span<const PartFile> parts,
                 const RunShare& share);

}  // namespace brenvik
