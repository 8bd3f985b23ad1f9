// A file as a whole, for those to whom it is no failure if there is none.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace brenvik {

/// The bytes of a file; null if there is none, or something else than a file, or one that can't be
/// read.
std::optional<std::string> ContentIfAny(const std::filesystem::path& file);

}  // namespace brenvik
