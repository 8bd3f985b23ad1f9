// The files of a part that was worked on elsewhere, put into the run's folder.
#pragma once

#include <cstddef>
#include <functional>
#include <span>
#include <string>
#include <string_view>

#include "session/ports/files_port.h"

namespace brenvik::app {

/// Calls `take` for each name below the folder; it puts the file there, or says that it can't: by false, or
/// by a Failure. All of them stay, or none: whoever does the part again would find files in its place that
/// nobody has written there. Returns whether they stay.
bool TakeAllOrNone(FilesPort& files, std::string_view folder, std::span<const std::string> names,
                   const std::function<bool(std::size_t at, const std::string& path)>& take);

}  // namespace brenvik::app
