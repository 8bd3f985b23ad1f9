// The platform keeps settings in its registry, which changes value by value: nothing has to be locked.
#include "settings_store/folder_lock.h"

namespace brenvik {

FolderLock::FolderLock(const std::filesystem::path&) {}
FolderLock::~FolderLock() = default;

}  // namespace brenvik
