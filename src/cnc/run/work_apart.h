// The work on one part of a run in a process of its own, as the run itself would do it.
#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <string>

#include "cnc/run/part_files.h"
#include "cnc/run/run_template.h"

namespace brenvik {

class WorkersPort;

/// What the work on runs is called while it is shown.
inline constexpr std::string_view ProgressOfRun = "CNC run";

/// The part's drawings, which are lent to whoever works on it.
std::array<std::string, 2> LentFilesOf(const PartFile& part);

/// Whether flags of the second side stand, which a part leaves to the next one when its file could not be
/// deleted.
bool HasFlagsOfSecondSide(const RunState& run);

/// The line of a part that no process has come through.
std::string SkippedFor(const PartFile& part, const std::string& how);

/// In the other process: works on the part in a folder of its own, and gives what came of it, packed.
std::string WorkOnPartApart(RunState& run, const PassWork& steps, std::span<const PartFile> parts,
                            std::size_t part, WorkersPort& workers);

}  // namespace brenvik
