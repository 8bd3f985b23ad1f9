// The entries that every drawing has.
#include "drafting_host/dxf/data/standard_entries.h"

#include <algorithm>

#include "drafting_host/dxf/texts/dxf_text.h"

namespace brenvik {
namespace {

template <typename Entry>
Entry* AddMissing(std::vector<Entry>& entries, std::string_view name) {
    const bool has = std::any_of(entries.begin(), entries.end(),
                                 [name](const Entry& entry) { return EqualsIgnoreCase(entry.name, name); });
    if (has) return nullptr;
    Entry& entry = entries.emplace_back();
    entry.name = name;
    return &entry;
}

}  // namespace

bool IsSpace(std::string_view blockName) {
    return EqualsIgnoreCase(blockName, ModelSpaceName) || StartsWithIgnoreCase(blockName, PaperSpaceName);
}

bool IsAllowedLayerName(std::string_view name) {
    constexpr std::size_t longestName = 255;
    if (name.empty() || TextUnits(name) > longestName) return false;
    return std::none_of(name.begin(), name.end(), [](char c) {
        return static_cast<unsigned char>(c) < ' ' || ForbiddenInNames.find(c) != std::string_view::npos;
    });
}

void AddStandardEntries(DrawingData& data) {
    AddMissing(data.layers, "0");
    AddMissing(data.linetypes, "ByBlock");
    AddMissing(data.linetypes, "ByLayer");
    if (LinetypeData* const continuous = AddMissing(data.linetypes, "Continuous"))
        continuous->description = "Solid line";
    AddMissing(data.styles, "Standard");
    const bool hasAcad = std::any_of(data.applications.begin(), data.applications.end(),
                                     [](const std::string& name) { return EqualsIgnoreCase(name, "ACAD"); });
    if (!hasAcad) data.applications.insert(data.applications.begin(), "ACAD");
    data.headerVariables.emplace("$TILEMODE", std::vector<std::pair<int, std::string>>{{70, "1"}});
}

}  // namespace brenvik
