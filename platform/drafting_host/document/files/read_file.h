// Files read as a whole.
#pragma once

#include <filesystem>
#include <string>

namespace brenvik {

/// Throws Failure 53 for a missing file, 75 for one that can't be read.
std::string ReadWholeFile(const std::filesystem::path& path);

}  // namespace brenvik
