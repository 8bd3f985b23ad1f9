// The work files that programs which died half way have left beside their targets.
#pragma once

#include <filesystem>

namespace brenvik {

/// Removes a work file if no living program is at work on it; how to find that out depends on the platform.
using ClearIfDead = void (*)(const std::filesystem::path& workFile);

/// Checks the work files of a folder. Once for each folder and program is enough.
void ClearDeadWorkFiles(const std::filesystem::path& folder, ClearIfDead clear);

}  // namespace brenvik
