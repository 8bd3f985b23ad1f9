// Files read and written as a whole.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace brenvik {

/// Throws Failure 53 for a missing file, 75 for one that can't be read.
std::string ReadWholeFile(const std::filesystem::path& path);

/// Replaces the file, or leaves it as it was: the content is written beside it and then renamed. Throws
/// Failure 76 for a missing folder, 61 or 75 where writing fails.
void WriteWholeFile(const std::filesystem::path& path, std::string_view content);

}  // namespace brenvik
