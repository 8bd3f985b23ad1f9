// Reading profile files.
#include "export/profiles.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "base/letter_case.h"
#include "base/quoted.h"
#include "base/text.h"

namespace brenvik {

namespace {

constexpr std::string_view ExtensionWord = "extension", ColumnsWord = "columns";

/// The text behind the word and the character that follows it.
std::string ValueOf(std::string_view line, std::string_view word) { return Mid(line, word.size() + 2); }

void TakeValue(ExportProfile& profile, std::string_view line, std::size_t number) {
    const bool isColumns = StartsWithIgnoreCase(line, ColumnsWord);
    if (!isColumns && !StartsWithIgnoreCase(line, ExtensionWord)) {
        if (!IsBlank(line) && !line.starts_with('#'))
            profile.faults.push_back(
                {number, "expected columns= with names of columns, or extension=, found " + InQuotes(line) +
                             "; it is not read"});
        return;
    }
    const std::string_view word = isColumns ? ColumnsWord : ExtensionWord;
    if (line.size() > word.size() && line[word.size()] != '=')
        profile.faults.push_back({number, "expected " + std::string(word) + "=, found " + InQuotes(line)});
    if (!isColumns) {
        profile.extension = ValueOf(line, word);
        return;
    }
    if (profile.columnsLine != 0)
        profile.faults.push_back({number, "the profile " + InQuotes(profile.name) + " has columns in line " +
                                              std::to_string(profile.columnsLine) +
                                              " already; these here count"});
    profile.columns = ValueOf(line, word);
    profile.columnsLine = number;
}

/// A name without its end begins no profile: what stands below it goes to the one above.
void TakeName(std::vector<ExportProfile>& profiles, const std::string& line, std::size_t number) {
    const std::size_t end = line.find(']');
    if (end == std::string::npos) {
        if (!profiles.empty())
            profiles.back().faults.push_back({number, "expected \"]\" behind the name of a profile, found " +
                                                          InQuotes(line) + "; the lines below it count for " +
                                                          InQuotes(profiles.back().name)});
        return;
    }
    ExportProfile profile;
    profile.name = line.substr(1, end - 1);
    profile.line = number;
    const auto same = std::ranges::find(profiles, profile.name, &ExportProfile::name);
    if (same != profiles.end())
        same->faults.push_back({number, "the profile " + InQuotes(profile.name) + " stands in line " +
                                            std::to_string(same->line) + " already, and that one is taken"});
    profiles.push_back(std::move(profile));
}

}  // namespace

std::vector<ExportProfile> ParseProfiles(std::span<const std::string> lines) {
    std::vector<ExportProfile> profiles;
    for (std::size_t at = 0; at < lines.size(); ++at) {
        if (lines[at].starts_with('['))
            TakeName(profiles, lines[at], at + 1);
        else if (!profiles.empty())
            TakeValue(profiles.back(), lines[at], at + 1);
    }
    for (ExportProfile& profile : profiles)
        if (profile.columns.empty())
            profile.faults.push_back({profile.columnsLine == 0 ? profile.line : profile.columnsLine,
                                      "the profile " + InQuotes(profile.name) +
                                          " has no columns, expected columns= with their names"});
    return profiles;
}

const ExportProfile* FindProfile(std::span<const ExportProfile> profiles, std::string_view name) {
    const auto found = std::ranges::find(profiles, name, &ExportProfile::name);
    return found == profiles.end() ? nullptr : &*found;
}

}  // namespace brenvik
