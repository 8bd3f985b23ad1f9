// Keeping other programs out of a folder's store while one changes it.
#pragma once

#include <filesystem>

namespace brenvik {

/// Waits until no other program, and no other store of this one, holds the lock of the folder, and holds it
/// until it goes out of scope; no file is made. A folder that is missing, and a file system that knows no
/// locks, count as unlocked.
class FolderLock {
  public:
    explicit FolderLock(const std::filesystem::path& folder);
    ~FolderLock();
    FolderLock(const FolderLock&) = delete;
    FolderLock& operator=(const FolderLock&) = delete;

  private:
    int mDescriptor = -1;
};

}  // namespace brenvik
