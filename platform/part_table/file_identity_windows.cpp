// Files by their volume and index.
#include <windows.h>

#include "part_table/file_identity.h"

namespace brenvik::part_table {

std::optional<FileIdentity> IdentityOf(const std::filesystem::path& file) {
    const HANDLE opened = CreateFileW(file.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                      nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (opened == INVALID_HANDLE_VALUE) return std::nullopt;
    BY_HANDLE_FILE_INFORMATION information{};
    const bool known = GetFileInformationByHandle(opened, &information) != 0;
    CloseHandle(opened);
    if (!known) return std::nullopt;
    constexpr unsigned halfWidth = 32;
    return FileIdentity{information.dwVolumeSerialNumber,
                        (std::uint64_t{information.nFileIndexHigh} << halfWidth) | information.nFileIndexLow};
}

}  // namespace brenvik::part_table
