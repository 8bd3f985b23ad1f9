// Files by their device and inode.
#include <sys/stat.h>

#include "part_table/file_identity.h"

namespace brenvik::part_table {

std::optional<FileIdentity> IdentityOf(const std::filesystem::path& file) {
    struct stat status {};
    if (::stat(file.c_str(), &status) != 0) return std::nullopt;
    return FileIdentity{status.st_dev, status.st_ino};
}

}  // namespace brenvik::part_table
