// One CNC run over the solids of a drawing, as the commands call it: the whole of it, or a share of its
// parts.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "cnc/output/output_care.h"
#include "drawings/drawing_unit.h"
#include "home/held_home.h"
#include "session/ports/workers_port.h"
#include "shell/drawing_options.h"

namespace brenvik {
class FileRoots;
}

namespace brenvik::app {

struct CncOptions {
    DrawingOptions drawing;
    UnitOption unit;
    std::string target, out, jobs, shard;
    bool fromGrid = false, noProof = false;
};

/// Who works on the parts of a run, other than its own processes; `files` are those of the run.
using WorkersOfRun = std::function<std::unique_ptr<WorkersPort>(FileRoots& files)>;

/// What a run doesn't see to itself.
struct GivenToRun {
    WorkersOfRun workers = {};
    /// Without it the run only empties its folder of what it has seen there at its beginning.
    std::optional<OutputCare> care = {};
};

/// Runs, and reports the result of the run.
ExitStatus CallCnc(const HeldHome& home, const CncOptions& options, const GivenToRun& given = {});

/// For the option --shard, such as 2/4: what was expected, blank for a share.
std::string CheckShare(std::string& word);

}  // namespace brenvik::app
