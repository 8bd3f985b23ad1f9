// How platforms keep a file for the running program. One of them knows how a file is claimed; the program
// hands it to the others.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>

namespace brenvik {

/// Claims a file against other programs for as long as the result lives; null when another one has it.
using FileClaimer = std::function<std::shared_ptr<const void>(const std::filesystem::path& file)>;

}  // namespace brenvik
