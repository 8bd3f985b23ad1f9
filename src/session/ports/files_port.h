// Files under the paths that the system writes: folders parted by backslashes, drive letters, names
// without regard to case. The platform maps them to real places.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace brenvik {

/// A folder that this program has for itself as long as the object lives.
class FolderClaim {
  public:
    virtual ~FolderClaim() = default;
};

class FilesPort {
  public:
    virtual ~FilesPort() = default;
    /// Folder of the installed system, as the platform writes it.
    virtual std::string InstallFolder() = 0;
    /// Folder of this program's own for its working database and the lists that it hands over, with a
    /// backslash at its end. Blank: no other program is at work here, and the places beside the library are
    /// its own.
    virtual std::string WorkFolder() { return {}; }
    /// The place of a path as people on this machine name it.
    virtual std::string PlaceOf(std::string_view path) { return std::string(path); }
    virtual bool FileExists(std::string_view path) = 0;
    virtual bool FolderExists(std::string_view path) = 0;
    /// Whether the file lies in the folder itself, however the two are written. A blank file doesn't.
    virtual bool FolderHolds(std::string_view, std::string_view) { return false; }
    /// Keeps a folder that exists from other programs; null if another one has it.
    virtual std::unique_ptr<FolderClaim> ClaimFolder(std::string_view) {
        return std::make_unique<FolderClaim>();
    }
    /// Waits until no other program writes over files of the folder that this file lies in, and keeps others
    /// waiting as long as the object lives: from looking at a file that several programs change to writing
    /// it. Not to be held while a person is asked.
    virtual std::unique_ptr<FolderClaim> AwaitTurn(std::string_view) {
        return std::make_unique<FolderClaim>();
    }
    /// Fails with 53 (file not found), 70 (permission denied) or 76 (path not found).
    virtual void RemoveFile(std::string_view path) = 0;
    /// Copies over an existing file.
    virtual void CopyFileOver(std::string_view from, std::string_view to) = 0;
    /// Gives a file another name, in the place of a file that has it already.
    virtual void MoveFileOver(std::string_view from, std::string_view to) {
        CopyFileOver(from, to);
        RemoveFile(from);
    }
    virtual void MakeFolder(std::string_view path) = 0;
    /// Names, not paths, of the files in a folder that match a pattern of * and ?.
    virtual std::vector<std::string> ListFiles(std::string_view folder, std::string_view pattern) = 0;
    /// The whole content as bytes.
    virtual std::string ReadFile(std::string_view path) = 0;
    /// Whole or not at all: written beside the target and moved over it.
    virtual void WriteFile(std::string_view path, std::string_view content) = 0;
    /// What ends a line of the text files that people and their programs read.
    virtual std::string_view LineEnd() const { return "\n"; }
};

}  // namespace brenvik
