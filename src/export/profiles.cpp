// Reading profile files.
#include "export/profiles.h"

#include <algorithm>

#include "base/letter_case.h"
#include "base/text.h"

namespace brenvik {

namespace {

/// The text behind the word and the character that follows it; whether the line begins with the word at all.
bool TakeValue(std::string_view line, std::string_view word, std::string& value) {
    if (!StartsWithIgnoreCase(line, word)) return false;
    value = Mid(line, word.size() + 2);
    return true;
}

}  // namespace

std::vector<ExportProfile> ParseProfiles(std::span<const std::string> lines) {
    std::vector<ExportProfile> profiles;
    for (const std::string& line : lines) {
        if (line.starts_with('[')) {
            const std::size_t end = line.find(']');
            if (end != std::string::npos) profiles.push_back({line.substr(1, end - 1), {}, {}});
            continue;
        }
        if (profiles.empty()) continue;
        ExportProfile& last = profiles.back();
        if (!TakeValue(line, "extension", last.extension)) TakeValue(line, "columns", last.columns);
    }
    return profiles;
}

const ExportProfile* FindProfile(std::span<const ExportProfile> profiles, std::string_view name) {
    const auto found = std::ranges::find(profiles, name, &ExportProfile::name);
    return found == profiles.end() ? nullptr : &*found;
}

}  // namespace brenvik
