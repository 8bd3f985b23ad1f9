// Reading profile files.
#include "export/profiles.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "base/letter_case.h"
#include "base/quoted.h"
#include "base/text.h"
#include "session/text_files.h"

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

/// A name without its end begins no profile: what stands below it goes to the one above, which has to be
/// there.
void TakeName(std::vector<ExportProfile>& profiles, const std::string& line, std::size_t number) {
    const std::size_t end = line.find(']');
    if (end == std::string::npos) {
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

/// The bars around a fixed text all go, so one too few or too many isn't seen in the file. A comma within
/// them ends the text, and leaves its second bar with the next column.
void LookAtBars(ExportProfile& profile) {
    for (const std::string& column : Split(profile.columns, ',')) {
        const bool isText = column.starts_with('|');
        if (!isText || (column.size() > 1 && column.find('|', 1) == column.size() - 1)) continue;
        profile.faults.push_back({profile.columnsLine,
                                  "expected \"|\" at the head and at the end of a fixed text without commas, "
                                  "found " +
                                      InQuotes(column)});
    }
}

void LookAtColumns(ExportProfile& profile) {
    if (profile.columns.empty())
        profile.faults.push_back({profile.columnsLine == 0 ? profile.line : profile.columnsLine,
                                  "the profile " + InQuotes(profile.name) +
                                      " has no columns, expected columns= with their names"});
    LookAtBars(profile);
}

/// With the profile that the line belongs to; lines before the first name are reported anyway.
void TellLine(std::vector<ExportProfile>& profiles, std::size_t number, std::string text) {
    const auto behind = std::ranges::find_if(
        profiles, [number](const ExportProfile& profile) { return profile.line > number; });
    if (behind != profiles.begin()) std::prev(behind)->faults.push_back({number, std::move(text)});
}

void TellOddCharacters(std::vector<ExportProfile>& profiles, std::span<const std::string> lines,
                       std::span<const std::size_t> guessedLines) {
    for (const std::size_t number : guessedLines)
        if (const std::string& line = lines[number - 1]; !line.starts_with('#'))
            TellLine(profiles, number, GuessedLineFault(line));
    for (std::size_t at = 0; at < lines.size(); ++at)
        if (std::string fault = ControlCharacterFault(lines[at]);
            !fault.empty() && !lines[at].starts_with('#'))
            TellLine(profiles, at + 1, std::move(fault));
}

}  // namespace

std::vector<ExportProfile> ParseProfiles(std::span<const std::string> lines,
                                         std::span<const std::size_t> guessedLines) {
    std::vector<ExportProfile> profiles;
    std::vector<ProfileFault> ahead;
    for (std::size_t at = 0; at < lines.size(); ++at) {
        const std::string& line = lines[at];
        // An unfinished name ahead of all others has nobody to go to either.
        const bool isName =
            line.starts_with('[') && (!profiles.empty() || line.find(']') != std::string::npos);
        if (isName)
            TakeName(profiles, line, at + 1);
        else if (!profiles.empty())
            TakeValue(profiles.back(), line, at + 1);
        else if (!IsBlank(line) && !line.starts_with('#'))
            ahead.push_back({at + 1, "expected the name of a profile in square brackets ahead of it, found " +
                                         InQuotes(line) + "; it is not read"});
    }
    TellOddCharacters(profiles, lines, guessedLines);
    for (ExportProfile& profile : profiles) {
        LookAtColumns(profile);
        // It is unknown which profile they were meant for.
        profile.faults.insert(profile.faults.begin(), ahead.begin(), ahead.end());
    }
    return profiles;
}

const ExportProfile* FindProfile(std::span<const ExportProfile> profiles, std::string_view name) {
    const auto found = std::ranges::find(profiles, name, &ExportProfile::name);
    return found == profiles.end() ? nullptr : &*found;
}

}  // namespace brenvik
