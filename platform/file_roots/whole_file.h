// Writing files whole or not at all.
#pragma once

#include <filesystem>
#include <string_view>

namespace brenvik {

/// How the names of work files begin, which stand beside a target while it is being written. Those that dead
/// programs left in a folder are cleared when a file is written there the next time.
inline constexpr std::string_view WorkFilePrefix = ".brenvik-work-";

/// Puts `content` in the place of a file: written beside it, brought to the disk, moved over it. Until the
/// last step the old file is whole, whatever happens; a failure leaves no work file. A link is followed
/// and a device is written to directly. Fails with 61 (disk full), 70 (permission denied; also for a file
/// that is set read-only), 75 (a folder stands there) or 76 (the folder is missing), the path as detail.
void WriteWholeFile(const std::filesystem::path& file, std::string_view content);

/// The same for a file that only the running program needs: it is moved into place as a whole, and the system
/// brings it to the disk when it likes. What a power cut takes was to be deleted anyway.
void WriteScratchFile(const std::filesystem::path& file, std::string_view content);

/// Brings the content of a file that is in place to the disk. Fails like `WriteWholeFile`.
void SyncFile(const std::filesystem::path& file);

/// Brings the names in a folder to the disk, where the file system can: the files are in place already, so
/// that a refusal is no failure.
void SyncFolder(const std::filesystem::path& folder);

}  // namespace brenvik
