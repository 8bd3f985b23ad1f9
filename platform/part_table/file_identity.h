// Checks whether a path still leads to the same file as before.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>

namespace brenvik::part_table {

/// What no two files of a machine share at one time.
struct FileIdentity {
    std::uint64_t device = 0, number = 0;
    bool operator==(const FileIdentity&) const = default;
};

/// Of the file that a path leads to now; null if there is none.
std::optional<FileIdentity> IdentityOf(const std::filesystem::path& file);

}  // namespace brenvik::part_table
