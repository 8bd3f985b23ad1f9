// One table for all who ask the file system.
#include "file_roots/file_failures.h"

#include "file_roots/places.h"

namespace brenvik {

namespace fs = std::filesystem;

Failure MissingFile(const fs::path& file) {
    std::error_code error;
    const fs::path folder = file.has_parent_path() ? file.parent_path() : fs::path(".");
    return fs::is_directory(folder, error) ? FileNotFound(TextFromPath(file))
                                           : PathNotFound(TextFromPath(file));
}

Failure FileFailure(const std::error_code& error, const fs::path& file) {
    const std::string shown = TextFromPath(file);
    if (error == std::errc::no_such_file_or_directory) return MissingFile(file);
    if (error == std::errc::not_a_directory) return PathNotFound(shown);
    if (error == std::errc::permission_denied || error == std::errc::operation_not_permitted ||
        error == std::errc::read_only_file_system)
        return PermissionDenied(shown);
    if (error == std::errc::no_space_on_device || error == std::errc::file_too_large) return DiskFull(shown);
    if (error == std::errc::filename_too_long) return BadFileName(shown);
    return PathAccess(shown + " (" + error.message() + ")");
}

}  // namespace brenvik
