// Folders that a long job fills: their names reach the disk together, every few seconds and at the job's end,
// and not file by file.
#pragma once

#include <filesystem>

namespace brenvik {

/// As long as it lives, files that are put whole into the folder are on the disk with their content, and with
/// their names a little later: a program that is killed leaves whole files, and so does a power cut, of which
/// the last seconds' names may be missing. At its end all is on the disk.
class LateFolder {
  public:
    explicit LateFolder(std::filesystem::path folder);
    ~LateFolder();
    LateFolder(const LateFolder&) = delete;
    LateFolder& operator=(const LateFolder&) = delete;

  private:
    std::filesystem::path mFolder;
};

/// Brings a new name in a folder to the disk, now or later.
void BringNameToDisk(const std::filesystem::path& folder);

/// The names of all late folders, now.
void BringLateNamesToDisk();

}  // namespace brenvik
