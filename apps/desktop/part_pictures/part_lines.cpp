// From part data on solids to words.
#include "part_pictures/part_lines.h"

#include <algorithm>
#include <array>

#include "base/failure.h"
#include "base/letter_case.h"
#include "base/number_text.h"
#include "base/numbers.h"
#include "base/skip.h"
#include "drafting_host/document/host_document.h"

namespace brenvik::desktop {

namespace {

constexpr int SizeDecimals = 3;

/// The text that a solid keeps under a key, as the host stores it: the application name, then the value.
std::string DataOf(const HostEntity& entity, std::string_view key) {
    std::vector<std::int16_t> types;
    std::vector<XDataValue> values;
    Skip([&] { entity.GetXData(key, types, values); });
    if (values.size() < 2) return {};
    const auto* const text = std::get_if<std::string>(&values[1]);
    return text == nullptr ? std::string() : *text;
}

std::string Size(double length) { return NumberToText(RoundHalfEven(length, SizeDecimals)); }

}  // namespace

std::vector<PartLine> PartLinesOf(HostDocument& document) {
    std::vector<PartLine> parts;
    for (HostEntity* entity : document.Model().Entities()) {
        if (dynamic_cast<HostSolid*>(entity) == nullptr) continue;
        PartLine part{entity->Handle(),
                      DataOf(*entity, "PartName"),
                      DataOf(*entity, "SubAssembly"),
                      DataOf(*entity, "Material"),
                      entity->Layer(),
                      entity->Visible()};
        if (part.name.empty()) part.name = "Part " + part.handle;
        parts.push_back(std::move(part));
    }
    return parts;
}

std::string HeadingOf(const PartLine& part, PartOrder order) {
    switch (order) {
        case PartOrder::SubAssembly:
            return part.subAssembly.empty() ? "No sub assembly" : part.subAssembly;
        case PartOrder::Material:
            return part.material.empty() ? "No material" : part.material;
        case PartOrder::Layer:
            return part.layer;
    }
    return {};
}

bool Matches(const PartLine& part, const std::string& words) {
    const std::string wanted = FoldLower(words);
    const std::array texts{&part.name, &part.subAssembly, &part.material, &part.layer, &part.handle};
    return std::ranges::any_of(
        texts, [&](const std::string* text) { return FoldLower(*text).find(wanted) != std::string::npos; });
}

std::vector<std::pair<std::string, std::string>> PropertiesOf(HostEntity& entity) {
    std::vector<std::pair<std::string, std::string>> lines;
    const auto add = [&lines](std::string caption, std::string value) {
        if (!value.empty()) lines.emplace_back(std::move(caption), std::move(value));
    };
    constexpr auto data = std::to_array<std::pair<const char*, const char*>>({{"Name", "PartName"},
                                                                              {"Sub assembly", "SubAssembly"},
                                                                              {"Material", "Material"},
                                                                              {"PN", "PN"},
                                                                              {"Letters", "ORIE"},
                                                                              {"Notes", "Notes"},
                                                                              {"User data 1", "UserData1"},
                                                                              {"User data 2", "UserData2"},
                                                                              {"Price", "Price"},
                                                                              {"Edge band 1", "EB1"},
                                                                              {"Edge band 2", "EB2"},
                                                                              {"Edge band 3", "EB3"},
                                                                              {"Edge band 4", "EB4"},
                                                                              {"Face", "Face"}});
    for (const auto& [caption, key] : data) add(caption, DataOf(entity, key));
    if (const auto* const solid = dynamic_cast<HostSolid*>(&entity)) {
        Skip([&] {
            const solids::Extents size = solid->Measures();
            std::array sides{size.d1, size.d2, size.d3};
            std::ranges::sort(sides, std::greater<>{});
            add("Board", Size(sides[0]) + " x " + Size(sides[1]) + " x " + Size(sides[2]));
        });
        Skip([&] {
            const Box3 box = solid->GetBoundingBox();
            add("Extents", Size(box.max.x - box.min.x) + ", " + Size(box.max.y - box.min.y) + ", " +
                               Size(box.max.z - box.min.z));
        });
        Skip([&] { add("Volume", Size(solid->Volume())); });
    }
    add("Layer", entity.Layer());
    add("Handle", entity.Handle());
    return lines;
}

}  // namespace brenvik::desktop
