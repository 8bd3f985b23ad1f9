// What the file system answers, as the usual failures.
#pragma once

#include <filesystem>
#include <system_error>

#include "base/failure.h"

namespace brenvik {

/// A file that can't be used because it (53), or the folder it should lie in (76), is not there.
Failure MissingFile(const std::filesystem::path& file);

/// The failure for an error of the file system, with the path as its detail.
Failure FileFailure(const std::error_code& error, const std::filesystem::path& file);

}  // namespace brenvik
