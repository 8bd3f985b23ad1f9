// Profiles: named column lists for exports, in text files that people edit by hand. The system only reads
// them.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace brenvik {

/// What can't be right about a profile.
struct ProfileFault {
    std::size_t line = 0;  ///< From 1.
    std::string text;      ///< What stands there and what was expected.
};

struct ExportProfile {
    std::string name;
    std::string extension;
    std::string columns;  ///< Column names parted by commas.
    std::size_t line = 0;
    std::size_t columnsLine = 0;  ///< 0 for a profile without a line of columns.
    /// Of its lines, those of an unfinished name and those that nobody reads among them.
    std::vector<ProfileFault> faults = {};
};

/// Names of the profile files in the application folder.
inline constexpr std::string_view CsvProfileFile = "BrenvikProfiles.txt";
inline constexpr std::string_view CncProfileFile = "CNCProfile.txt";

/// The profiles of a file's lines: "[name]" begins one, a line starting with "extension" or "columns" has its
/// value behind the character that follows the word, and the last such line of a profile counts. Lines of
/// other form are passed over, as are lines before the first name and a name without its "]"; they are
/// faults of the profile that they stand in, unless they are blank or begin with "#", and those before the
/// first name are faults of each profile. So are lines whose letters were guessed, by their numbers.
std::vector<ExportProfile> ParseProfiles(std::span<const std::string> lines,
                                         std::span<const std::size_t> guessedLines = {});

/// The first profile of exactly this name, or null.
const ExportProfile* FindProfile(std::span<const ExportProfile> profiles, std::string_view name);

}  // namespace brenvik
