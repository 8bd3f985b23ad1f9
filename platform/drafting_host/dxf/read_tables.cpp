// The section TABLES: layers, linetypes, styles, coordinate systems, applications and block records. Of
// the other tables only the handles are kept.
#include <algorithm>
#include <cstdlib>

#include "drafting_host/dxf/reading.h"

namespace brenvik {
namespace {

constexpr int flagFrozen = 1, flagLocked = 4;
constexpr int lastColor = 255, defaultLayerColor = 7;

// The entry of a name, made once; a second entry of the same name is told and passed over.
template <typename Entry>
Entry* NewEntry(Reading& reading, std::vector<Entry>& entries,
                std::map<std::string, std::size_t, LessIgnoreCase>& places, const std::string& name,
                std::size_t line) {
    if (name.empty() || !places.emplace(name, entries.size()).second) {
        reading.Note(line, "table entry " + ShownName(name) + " passed over: expected a name of its own");
        return nullptr;
    }
    entries.emplace_back().name = name;
    return &entries.back();
}

void TakeLayerGroup(Reading& reading, LayerData& layer, const Group& group) {
    switch (group.code) {
        case 5:
            layer.handle = HandleOf(group);
            break;
        case 6:
            layer.linetype = reading.Text(group);
            break;
        case 62: {
            const int color = std::clamp(IntegerOf(group), -lastColor - 1, lastColor + 1);
            layer.on = color >= 0;
            const int index = std::abs(color);
            layer.color = index >= 1 && index <= lastColor ? index : defaultLayerColor;
            break;
        }
        case 70: {
            const int flags = IntegerOf(group);
            layer.frozen = (flags & flagFrozen) != 0;
            layer.locked = (flags & flagLocked) != 0;
            break;
        }
        case 290:
            layer.plottable = IntegerOf(group) != 0;
            break;
        case 370:
            layer.lineweight = std::clamp(IntegerOf(group), -3, 211);
            break;
        default:
            break;
    }
}

void TakeLinetypeGroup(Reading& reading, LinetypeData& linetype, const Group& group) {
    switch (group.code) {
        case 3:
            linetype.description = reading.Text(group);
            break;
        case 5:
            linetype.handle = HandleOf(group);
            break;
        case 40:
            linetype.patternLength = RealOf(group);
            break;
        case 49:
            linetype.dashes.push_back(RealOf(group));
            break;
        default:
            break;
    }
}

void TakeStyleGroup(Reading& reading, TextStyleData& style, const Group& group) {
    switch (group.code) {
        case 3:
            style.font = reading.Text(group);
            break;
        case 4:
            style.bigFont = reading.Text(group);
            break;
        case 5:
            style.handle = HandleOf(group);
            break;
        case 40:
            style.height = std::max(0.0, RealOf(group));
            break;
        case 41:
            style.widthFactor = RealOf(group);
            break;
        case 50:
            style.oblique = AngleOf(group);
            break;
        case 70:
            style.flags = IntegerOf(group) & 0x05;
            break;
        case 71:
            style.generation = IntegerOf(group) & 0x06;
            break;
        default:
            break;
    }
}

void TakeUcsGroup(UcsData& ucs, const Group& group) {
    if (group.code == 5) ucs.handle = HandleOf(group);
    if (TakePoint(group, 0, ucs.origin) || TakePoint(group, 1, ucs.xAxis)) return;
    TakePoint(group, 2, ucs.yAxis);
}

std::string NameOf(const Reading& reading, Groups groups) {
    const Group* const group = FindGroup(groups, 2);
    return group == nullptr ? std::string() : reading.Text(*group);
}

std::string LayerEntryName(Reading& reading, Groups groups) {
    const Group* const group = FindGroup(groups, 2);
    return group == nullptr ? std::string() : LayerNameOf(reading, *group);
}

HandleValue HandleIn(Groups groups, int code) {
    const Group* const group = FindGroup(groups, code);
    return group == nullptr ? 0 : HandleOf(*group);
}

template <typename Entry, typename Take>
void TakeEntry(Entry* entry, Groups groups, Take take) {
    if (entry == nullptr) return;
    for (const Group& group : groups) take(*entry, group);
}

void ReadBlockRecord(Reading& reading, Groups groups) {
    const std::string name = CanonicalBlockName(NameOf(reading, groups));
    const HandleValue handle = HandleIn(groups, 5);
    if (handle == 0 || name.empty()) return;
    reading.blockOfRecord.emplace(handle, name);
    reading.recordOfBlock.emplace(name, handle);
}

void ReadApplication(Reading& reading, Groups groups) {
    const std::string name = NameOf(reading, groups);
    if (name.empty() || !reading.applicationNames.insert(name).second) return;
    reading.data.applications.push_back(name);
    reading.data.fileHandles.emplace("APPID " + name, HandleIn(groups, 5));
}

void ReadEntry(Reading& reading, std::string_view kind, Groups groups, std::size_t line) {
    DrawingData& data = reading.data;
    const auto name = [&] { return NameOf(reading, groups); };
    if (kind == "LAYER") {
        TakeEntry(NewEntry(reading, data.layers, reading.layerPlaces, LayerEntryName(reading, groups), line),
                  groups,
                  [&](LayerData& layer, const Group& group) { TakeLayerGroup(reading, layer, group); });
    } else if (kind == "LTYPE") {
        TakeEntry(
            NewEntry(reading, data.linetypes, reading.linetypePlaces, name(), line), groups,
            [&](LinetypeData& linetype, const Group& group) { TakeLinetypeGroup(reading, linetype, group); });
    } else if (kind == "STYLE") {
        // A nameless style stands for a shape file, which texts don't use.
        if (name().empty()) return;
        TakeEntry(NewEntry(reading, data.styles, reading.stylePlaces, name(), line), groups,
                  [&](TextStyleData& style, const Group& group) { TakeStyleGroup(reading, style, group); });
    } else if (kind == "UCS") {
        UcsData ucs;
        ucs.name = name();
        TakeEntry(&ucs, groups, TakeUcsGroup);
        if (ucs.name.empty() || !reading.ucsNames.insert(ucs.name).second)
            throw EntityRefused{
                line, "a name of its own was expected for the coordinate system " + ShownName(ucs.name)};
        data.namedUcs.push_back(std::move(ucs));
    } else if (kind == "APPID") {
        ReadApplication(reading, groups);
    } else if (kind == "BLOCK_RECORD") {
        ReadBlockRecord(reading, groups);
    } else if (kind == "DIMSTYLE") {
        if (EqualsIgnoreCase(name(), "Standard")) data.fileHandles.emplace("DIMSTYLE", HandleIn(groups, 105));
    } else if (kind == "VPORT") {
        if (EqualsIgnoreCase(name(), "*Active")) data.fileHandles.emplace("VPORT", HandleIn(groups, 5));
    } else if (kind == "TABLE") {
        data.fileHandles.emplace("TABLE " + name(), HandleIn(groups, 5));
    }
}

}  // namespace

std::string CanonicalBlockName(std::string name) {
    if (EqualsIgnoreCase(name, modelSpaceName) || EqualsIgnoreCase(name, "$MODEL_SPACE"))
        return std::string(modelSpaceName);
    if (EqualsIgnoreCase(name, paperSpaceName) || EqualsIgnoreCase(name, "$PAPER_SPACE"))
        return std::string(paperSpaceName);
    return name;
}

void ReadTableEntry(Reading& reading, const Record& record) {
    try {
        ReadEntry(reading, record.name, record.groups, record.line);
    } catch (const EntityRefused& refused) {
        reading.Note(refused.line, "table entry " + std::string(ShownName(record.name)) +
                                       " taken over in part or not: " + refused.reason);
    }
}

}  // namespace brenvik
