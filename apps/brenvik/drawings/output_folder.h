// Guards the folders that commands empty before they write: a wrong word behind --out must not cost a user's
// own files.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace brenvik::app {

/// What a command says of its output folder, and which files are its own to delete.
struct OutputFolderRule {
    std::string_view emptied;  ///< "the export empties its folder"
    std::string_view foreign;  ///< "which is from no export"
    bool (*isOwn)(const std::string& name);
};

/// Fails when the folder, which is emptied without being named on the command line, holds the drawing.
void RequireFolderWithoutDrawing(const std::filesystem::path& folder, const std::filesystem::path& drawing,
                                 const OutputFolderRule& rule);

/// Fails unless the folder is missing, or holds only files that the command may delete. `shown` is the folder
/// as the user wrote it; a folder that holds the drawing is refused in any case.
void RequireOwnFolder(const std::filesystem::path& folder, const std::string& shown,
                      const std::filesystem::path& drawing, const OutputFolderRule& rule);

}  // namespace brenvik::app
