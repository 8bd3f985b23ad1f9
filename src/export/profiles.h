// Profiles: named column lists for exports, in text files that people edit by hand. The system only reads
// them.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace brenvik {

struct ExportProfile {
    std::string name;
    std::string extension;
    std::string columns;  ///< Column names parted by commas.
};

/// Names of the profile files in the application folder.
inline constexpr std::string_view CsvProfileFile = "BrenvikProfiles.txt";
inline constexpr std::string_view CncProfileFile = "CNCProfile.txt";

/// The profiles of a file's lines: "[name]" begins one, a line starting with "extension" or "columns" has its
/// value behind the character that follows the word, and the last such line of a profile counts. Lines of
/// other form are passed over, as are values before the first name and a name without its "]".
std::vector<ExportProfile> ParseProfiles(std::span<const std::string> lines);

/// The first profile of exactly this name, or nothing.
const ExportProfile* FindProfile(std::span<const ExportProfile> profiles, std::string_view name);

}  // namespace brenvik
