#include "drafting_host/dwg/entity_checks.h"

#include <algorithm>
#include <array>
#include <unordered_map>
#include <variant>

#include "base/letter_case.h"
#include "drafting_host/dxf/data/standard_entries.h"

namespace brenvik::dwg {

void CheckOwner(Reading& reading, const Holder& holder, const Common& common, const std::string& block) {
    constexpr unsigned byOwner = 0, inPaperSpace = 1, inModelSpace = 2;
    const auto record = reading.recordOfBlock.find(block);
    const bool fits = (common.mode == byOwner &&
                       (record == reading.recordOfBlock.end() || common.owner == record->second)) ||
                      (common.mode == inModelSpace && block == ModelSpaceName) ||
                      (common.mode == inPaperSpace && block == PaperSpaceName);
    if (!fits)
        reading.Doubt("owner of entity", 0,
                      ShownHolder(holder) + " says that it stands in another block than " + ShownName(block) +
                          ", which has it: one of the two may be damaged",
                      true);
}

void CheckEnd(EntityGeometry& geometry, const Holder& holder, const Sections& sections, const Texts& texts,
              const ObjectMap& map, const Kinds& kinds, Links& links) {
    auto* const line = std::get_if<PolylineData>(&geometry);
    if (line == nullptr) return;
    try {
        const ObjectMap::Entry* const end = map.Find(line->seqendHandle);
        if (end != nullptr && kinds.NameOf(OpenObject(sections, texts, *end).type) == "SEQEND") return;
    } catch (const Damage&) {
        // it is reported by itself
    }
    links.Drop("a SEQEND", line->seqendHandle, holder);
    line->seqendHandle = 0;
}

void TakeBlockName(Reading& reading, Block& block, const std::string& nameOfBegin) {
    if (nameOfBegin.empty()) return;
    // One that got its name later keeps that of an anonymous one in its record.
    const bool isAnonymous = block.name.starts_with('*'), isNumbered = nameOfBegin.starts_with('*');
    const std::string name = isNumbered ? nameOfBegin.substr(0, block.name.size()) : nameOfBegin;
    const bool isNumber = nameOfBegin.find_first_not_of("0123456789", name.size()) == std::string::npos;
    if ((!EqualsIgnoreCase(name, block.name) || !isNumber) && (!isAnonymous || isNumbered))
        reading.Note(0, ShownHolder({"block " + ShownName(block.name), block.record}) + " is named " +
                            ShownName(nameOfBegin) +
                            " by its BLOCK, which is taken: one of the two may be damaged");
    block.name = nameOfBegin;
}

void CheckReferences(Reading& reading, const Names& names) {
    std::unordered_map<HandleValue, const std::string*> shown;
    for (const BlockData& block : reading.data.blocks)
        for (const EntityData& entity : block.entities)
            if (const auto* const insert = std::get_if<InsertData>(&entity.geometry); insert != nullptr)
                shown.emplace(entity.handle, &insert->block);
    for (const Block& block : names.blocks)
        for (const HandleValue reference : block.references) {
            const auto found = shown.find(reference);
            if (found == shown.end() || EqualsIgnoreCase(*found->second, block.name)) continue;
            reading.Note(0, ShownHolder({"INSERT", reference}) + " shows the block " +
                                ShownName(*found->second) + ", though " +
                                ShownHolder({"block " + ShownName(block.name), block.record}) +
                                " has it among its references: one of the two may be damaged");
        }
}

void CheckStandardNames(Reading& reading, const Names& names, const Header& header) {
    if (!reading.layerPlaces.contains("0")) reading.Note(0, "the drawing has no layer \"0\": it gets one");
    constexpr auto linetypes = std::to_array<std::string_view>({"ByLayer", "ByBlock", "Continuous"});
    for (const std::string_view linetype : linetypes) {
        std::string variable;
        for (const char c : linetype) variable += static_cast<char>(c >= 'a' && c <= 'z' ? c - 'a' + 'A' : c);
        const auto handle = header.handles.find(variable);
        if (handle == header.handles.end()) continue;
        const auto name = names.linetypes.find(handle->second);
        if (name == names.linetypes.end() || EqualsIgnoreCase(name->second, linetype)) continue;
        reading.Note(0, ShownHolder({"LTYPE", handle->second}) + " is named " + ShownName(name->second) +
                            " where " + ShownName(linetype) + " was expected: it may be damaged");
    }
}

}  // namespace brenvik::dwg
