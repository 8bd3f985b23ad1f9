#include "drafting_host/document/files/unscaled_lengths.h"

#include <algorithm>
#include <array>
#include <map>
#include <string_view>
#include <variant>

#include "base/numbers.h"
#include "base/text.h"
#include "drafting_host/document/host_document.h"
#include "drafting_host/dxf/data/kept_text.h"

namespace brenvik {
namespace {

/// Places, displacements, distances and factors of extended data are lengths of the drawing.
bool IsLengthOfData(int code) {
    const bool isPoint = code >= 1011 && code <= 1032 && (code % 10 == 1 || code % 10 == 2);
    return isPoint || code == 1041 || code == 1042;
}

/// Objects with lengths among their values. Styles of multilines, leaders and tables, which every drawing
/// has, go with what is drawn in them, which is reported by itself.
constexpr auto ObjectsWithLengths = std::to_array<std::string_view>({"GEODATA", "XRECORD"});

bool IsLengthOfObject(int code) {
    return (code >= 10 && code < 60) || (code >= 110 && code < 150) || IsLengthOfData(code);
}

bool HoldsLength(std::string_view groups, bool (*isLength)(int)) {
    GroupWalk walk(groups);
    while (walk.Next())
        if (isLength(walk.Code()) && LenientNumber(Trim(walk.Value())) != 0) return true;
    return false;
}

bool HoldsLength(const std::vector<XDataOfApp>& data) {
    return std::ranges::any_of(data, [](const XDataOfApp& app) {
        return std::ranges::any_of(app.items,
                                   [](const XDataItem& item) { return IsLengthOfData(item.code); });
    });
}

}  // namespace

std::string UnscaledLengths(const HostDocument& document) {
    std::map<std::string, std::size_t> counts;
    std::size_t blocks = 0, inBlocks = 0;
    for (const auto& block : document.AllBlocks()) {
        const KeptBlock* const kept = block->Record().kept.value.get();
        if (kept != nullptr &&
            (HoldsLength(kept->record.further, IsLengthOfData) || HoldsLength(kept->begin, IsLengthOfData)))
            ++blocks;
        if (block->IsSpace()) continue;
        for (const HostEntity* entity : block->Entities())
            if (HoldsLength(entity->ExtendedData())) ++inBlocks;
    }
    if (document.Tables().file) {
        for (const KeptRecord& object : document.Tables().file->objects) {
            const bool mayHold =
                std::ranges::find(ObjectsWithLengths, object.name) != ObjectsWithLengths.end();
            if (mayHold && HoldsLength(object.groups, IsLengthOfObject)) ++counts[object.name];
        }
    }
    std::string all;
    const auto add = [&](std::size_t count, const std::string& what) {
        if (count > 0) all += (all.empty() ? "" : ", ") + what;
    };
    add(blocks, "extended data of " + std::to_string(blocks) + (blocks == 1 ? " block" : " blocks"));
    add(inBlocks, "extended data of " + std::to_string(inBlocks) + (inBlocks == 1 ? " entity" : " entities") +
                      " in blocks");
    for (const auto& [kind, count] : counts) add(count, std::to_string(count) + " " + kind);
    return all;
}

}  // namespace brenvik
