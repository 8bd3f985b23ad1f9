// The hand-over lists: groups of equal lines, and the lines of the run's list both ways.
#include "parts/cnc_list.h"

#include <unordered_map>

#include "base/numbers.h"
#include "base/skip.h"
#include "base/text.h"

namespace brenvik {

namespace {

/// What parts are grouped by: all that stands behind their id and quantity.
std::string KeyOf(std::string_view line) { return SplitAtFirst(SplitAtFirst(line, ',').tail, ',').tail; }

}  // namespace

bool StandsInAGroup(std::string_view line) { return !KeyOf(line).empty(); }

std::string IdOf(std::string_view line) { return Trim(SplitAtFirst(line, ',').head); }

std::vector<CncGroup> CncGroupsOf(std::span<const std::string> lines) {
    std::vector<CncGroup> groups;
    std::unordered_map<std::string, std::size_t> groupOf;
    for (const std::string& line : lines) {
        const std::string key = KeyOf(line);
        if (key.empty()) continue;
        const auto [place, isNew] = groupOf.emplace(key, groups.size());
        if (isNew) groups.emplace_back();
        groups[place->second].push_back(IdOf(line));
    }
    return groups;
}

std::string GroupedCncList(std::span<const std::string> lines, std::string_view lineEnd) {
    std::string text;
    for (const CncGroup& group : CncGroupsOf(lines)) {
        if (group.front().empty()) continue;
        text += group.front() + "," + std::to_string(group.size());
        text += lineEnd;
    }
    return text;
}

std::optional<ListedPart> ParseCncListLine(std::string_view line) {
    const HeadAndTail parts = SplitAtFirst(line, ',');
    if (!parts.found) return std::nullopt;
    ListedPart part{Trim(parts.head), 0};
    if (!Skip([&] { part.quantity = StrictInteger(parts.tail); })) return std::nullopt;
    return part;
}

}  // namespace brenvik
