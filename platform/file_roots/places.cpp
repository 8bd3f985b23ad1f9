// What is the same about places on every platform.
#include "file_roots/places.h"

#include <system_error>

#include "base/failure.h"

namespace brenvik {

namespace fs = std::filesystem;

fs::path CurrentFolder() {
    std::error_code error;
    fs::path folder = fs::current_path(error);
    if (error) throw PathNotFound("the current folder (" + error.message() + ")");
    return folder;
}

fs::path AbsolutePath(const fs::path& path) {
    return path.is_absolute() ? path : fs::absolute(CurrentFolder() / path);
}

}  // namespace brenvik
