// The lock of a folder by its own descriptor, which the system lets go of even when the program dies.
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>

#include "settings_store/folder_lock.h"

namespace brenvik {

FolderLock::FolderLock(const std::filesystem::path& folder)
    : mDescriptor(::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
    while (mDescriptor >= 0 && ::flock(mDescriptor, LOCK_EX) != 0 && errno == EINTR) {
    }
}

FolderLock::~FolderLock() {
    if (mDescriptor >= 0) ::close(mDescriptor);
}

}  // namespace brenvik
