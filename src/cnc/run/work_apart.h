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

/// Whether second-side flags are set that this part passes to the next, because its file could not be
/// deleted.
bool HasFlagsOfSecondSide(const RunState& run);

/// The report line for a part whose process died.
std::string SkippedFor(const PartFile& part, const std::string& how);

/// In the other process: works on the part in a folder of its own, and returns its packed result.
std::string WorkOnPartApart(RunState& run, const PassWork& steps, std::span<const PartFile> parts,
                            std::size_t part, WorkersPort& workers);

}  // namespace brenvik
