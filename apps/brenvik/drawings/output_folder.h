// Guards the folders that commands empty before they write: a wrong word behind --out must not cost a user's
// own files.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "cnc/output/output_care.h"

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

/// The folders of second sides in a folder, in whatever case they are there.
std::vector<std::filesystem::path> SecondSideFoldersIn(const std::filesystem::path& folder);

/// The files of a folder that is going to be emptied, and of the second sides in it, as they are when a
/// command begins. By the time that it has the folder to itself, another program may have filled it and
/// ended.
class SeenFolder {
  public:
    explicit SeenFolder(std::filesystem::path folder);

    /// Why the folder must not be emptied: a file that is new since then, or another one under its name.
    std::optional<std::string> WhatIsNew() const;

  private:
    using State = std::pair<std::uintmax_t, std::filesystem::file_time_type>;
    using States = std::map<std::filesystem::path, State>;
    static void AddFilesIn(const std::filesystem::path& folder, States& states);
    States Look() const;

    std::filesystem::path mFolder;
    States mSeen;
};

/// An output care that holds as long as the object lives.
class CareInForce {
  public:
    explicit CareInForce(OutputCare care);
    ~CareInForce();
    CareInForce(const CareInForce&) = delete;
    CareInForce& operator=(const CareInForce&) = delete;

  private:
    OutputCare mCare;
};

}  // namespace brenvik::app
