// The files port over a real file system. The system writes paths with backslashes, drive letters and
// names in any case; where the platform knows none of these, drives are folders of the home folder and
// names are looked up without regard to case.
#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "file_roots/folder_names.h"
#include "file_roots/work_folder.h"
#include "session/ports/files_port.h"

namespace brenvik {

/// Files under a home folder, which is the folder of the installed system.
///
/// "c:\BV-DXF\x.dxf" lies at <home>/drive_c/BV-DXF/x.dxf where there are no drive letters; the root of a
/// drive is made when a file is written. A path that begins with a separator is one of the machine itself,
/// any other one is relative to the current folder. Each name of a path is taken as it stands if it exists
/// so, else in whatever case it exists (the first in byte order), else as it stands.
///
/// Failures carry the usual numbers (52, 53, 61, 70, 75, 76) and the real path as their detail.
class FileRoots : public FilesPort {
  public:
    /// The home folder need not exist yet.
    explicit FileRoots(const std::filesystem::path& home);
    /// The place for the working files of this program, where several may run in one home.
    void SetWorkFolder(brenvik::WorkFolder& folder) { mWorkFolder = &folder; }

    /// Puts a folder of the system's own form, and all that lies in it, at another place. The innermost
    /// mapped folder decides,
    /// and of two places for one folder the last.
    void MapFolder(std::string_view systemFolder, const std::filesystem::path& folder);

    /// The real place of a path. Throws Failure 52 for a blank path.
    std::filesystem::path Resolve(std::string_view systemPath) const;

    std::string InstallFolder() override;
    std::string WorkFolder() override;
    std::string PlaceOf(std::string_view path) override;
    bool FileExists(std::string_view path) override;
    bool FolderExists(std::string_view path) override;
    bool FolderHolds(std::string_view folder, std::string_view file) override;
    /// What is written into a claimed folder as a draft (`WriteFile`) is whole at any moment, and on the disk
    /// when it is moved to its name. All other files are on the disk at once, with their names every few
    /// seconds and at the end of the claim. The folder's names are listed once.
    std::unique_ptr<FolderClaim> ClaimFolder(std::string_view path) override;
    std::unique_ptr<FolderClaim> AwaitTurn(std::string_view path) override;
    void RemoveFile(std::string_view path) override;
    void CopyFileOver(std::string_view from, std::string_view to) override;
    void MoveFileOver(std::string_view from, std::string_view to) override;
    /// Makes the folders above it too; a folder that exists is fine.
    void MakeFolder(std::string_view path) override;
    /// In the order of the names without case. A folder that is missing has no files.
    std::vector<std::string> ListFiles(std::string_view folder, std::string_view pattern) override;
    std::string ReadFile(std::string_view path) override;
    void WriteFile(std::string_view path, std::string_view content) override;
    std::string_view LineEnd() const override;

    /// What reading this file gives from here on, whatever other programs write, until it is written here.
    void HoldAt(std::string_view path, std::string content) { mHeld[Resolve(path)] = std::move(content); }

  private:
    struct Mapping {
        char drive;
        bool absolute;
        std::vector<std::string> names;
        std::filesystem::path folder;
    };

    /// The same for a file that is going to be written: a drive that isn't there yet is made.
    std::filesystem::path ResolveToWrite(std::string_view systemPath) const;

    std::filesystem::path mHome;
    std::shared_ptr<FolderNames> mNames = std::make_shared<FolderNames>();
    std::vector<Mapping> mMappings;
    std::map<std::filesystem::path, std::string> mHeld;
    brenvik::WorkFolder* mWorkFolder = nullptr;
};

/// Whether the folder itself holds the file, also by a link that names it elsewhere; what lies in folders
/// below doesn't count.
bool FolderHolds(const std::filesystem::path& folder, const std::filesystem::path& file);

}  // namespace brenvik
