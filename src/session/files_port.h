// Files under the paths that the system writes: folders parted by backslashes, drive letters, names
// without regard to case. The platform maps them to real places.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace brenvik {

class FilesPort {
  public:
    virtual ~FilesPort() = default;
    /// Folder of the installed system, as the platform writes it.
    virtual std::string InstallFolder() = 0;
    virtual bool FileExists(std::string_view path) = 0;
    virtual bool FolderExists(std::string_view path) = 0;
    /// Fails with 53 (file not found), 70 (permission denied) or 76 (path not found).
    virtual void RemoveFile(std::string_view path) = 0;
    /// Copies over an existing file.
    virtual void CopyFileOver(std::string_view from, std::string_view to) = 0;
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
