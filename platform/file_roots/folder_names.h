// What names the folders of a job hold, so that a name in another case is found without listing a folder anew
// for each of its files.
#pragma once

#include <filesystem>
#include <map>
#include <set>
#include <string>

namespace brenvik {

/// The folder's path without a separator at its end, however it is written.
std::filesystem::path PlainFolder(const std::filesystem::path& folder);

/// The names of folders that this program has for itself. What it writes there it looks up here first, so
/// those names are known too; whether one still is there is asked each time.
class FolderNames {
  public:
    void Keep(const std::filesystem::path& folder);
    void Forget(const std::filesystem::path& folder);
    bool Keeps(const std::filesystem::path& folder) const;
    /// Like `FindEntry`, which it calls for folders that aren't kept.
    std::filesystem::path Find(const std::filesystem::path& folder, const std::string& name);

  private:
    /// By what they are without case.
    using Names = std::map<std::string, std::set<std::string>>;
    std::map<std::filesystem::path, Names> mFolders;
};

}  // namespace brenvik
