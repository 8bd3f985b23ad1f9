// How platforms put files in place. One of them knows how a file reaches the disk safely; the program hands
// its writer to the others.
#pragma once

#include <filesystem>
#include <functional>
#include <string_view>

namespace brenvik {

/// Puts a file's whole content in place, or throws Failure and leaves the old one.
using WholeFileWriter = std::function<void(const std::filesystem::path& file, std::string_view content)>;

}  // namespace brenvik
