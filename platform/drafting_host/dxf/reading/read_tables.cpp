// The section TABLES: layers, linetypes, styles, coordinate systems, applications and block records. The
// other tables go through unread.
#include <algorithm>
#include <cstdlib>

#include "drafting_host/dxf/reading/reading.h"

namespace brenvik {
namespace {

constexpr int FlagFrozen = 1, FlagLocked = 4;
constexpr int LastColor = 255, DefaultLayerColor = 7;

// The entry of a name, made once; a second entry of the same name is reported and passed over.
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
            const int color = std::clamp(IntegerOf(group), -LastColor - 1, LastColor + 1);
            layer.on = color >= 0;
            const int index = std::abs(color);
            const bool isColor = index >= 1 && index <= LastColor;
            layer.color = isColor ? index : DefaultLayerColor;
            if (!isColor)
                reading.Note(group.line,
                             "layer " + ShownName(layer.name) + ": group 62 holds " +
                                 std::to_string(IntegerOf(group)) +
                                 " where a colour from 1 to 255 was expected; 7 is taken",
                             false);
            break;
        }
        case 70: {
            const int flags = IntegerOf(group);
            layer.frozen = (flags & FlagFrozen) != 0;
            layer.locked = (flags & FlagLocked) != 0;
            break;
        }
        case 290:
            layer.plottable = IntegerOf(group) != 0;
            break;
        case 370:
            layer.lineweight = IntegerWithin(reading, group, -3, 211, "a line weight", -3);
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

KeptTable& TableOf(Reading& reading, std::string_view name) {
    for (KeptTable& table : reading.file.tables)
        if (table.name == name) return table;
    reading.file.tables.push_back({std::string(name), {}, {}});
    return reading.file.tables.back();
}

/// Keeps an entry that a drawing doesn't hold.
void KeepEntry(Reading& reading, const Record& record) {
    if (!reading.KeepsRecords()) {
        // Every drawing has these two; they are written anew when it is saved.
        const std::string name = NameOf(reading, record.groups);
        const bool isUsual = (record.name == "DIMSTYLE" && EqualsIgnoreCase(name, "Standard")) ||
                             (record.name == "VPORT" && EqualsIgnoreCase(name, "*Active"));
        if (isUsual) {
            reading.Note(record.line,
                         std::string(record.name) + " " + ShownName(name) +
                             " is not taken along: a drawing saved from release 12 gets a new one",
                         false);
        } else {
            ++reading.unkept[std::string(record.name)];
        }
        return;
    }
    TableOf(reading, record.name).entries.push_back(KeptRecordOf(record));
}

template <typename Entry>
void KeepWhole(const Reading& reading, const Record& record, Entry* entry) {
    if (entry != nullptr && reading.KeepsRecords())
        entry->kept = {std::make_shared<const KeptRecord>(KeptRecordOf(record))};
}

template <typename Entry>
void KeepLeftovers(Reading& reading, const Record& record, Entry* entry) {
    if (entry == nullptr) return;
    KeptGroups kept = LeftoversOfEntry(record.name, record.groups);
    if (reading.KeepsRecords()) {
        entry->kept = {std::make_shared<const KeptGroups>(std::move(kept))};
        return;
    }
    CountLost(reading.unkept, std::string(record.name), kept.own);
    constexpr int frozenInNewViews = 2;
    if ((kept.flags & frozenInNewViews) != 0)
        ++reading.unkept[std::string(record.name) + ", frozen in new viewports"];
}

void ReadBlockRecord(Reading& reading, Groups groups) {
    const std::string name = CanonicalBlockName(NameOf(reading, groups));
    const HandleValue handle = HandleIn(groups, 5);
    if (handle == 0 || name.empty()) return;
    if (reading.KeepsRecords()) reading.keptBlocks[name].record = LeftoversOfEntry("BLOCK_RECORD", groups);
    reading.blockOfRecord.emplace(handle, name);
    reading.recordOfBlock.emplace(name, handle);
}

void ReadApplication(Reading& reading, Groups groups) {
    const std::string name = NameOf(reading, groups);
    if (name.empty() || !reading.applicationNames.insert(name).second) return;
    reading.data.applications.push_back(name);
    reading.data.fileHandles.emplace("APPID " + name, HandleIn(groups, 5));
}

void ReadUcs(Reading& reading, const Record& record) {
    UcsData ucs;
    ucs.name = NameOf(reading, record.groups);
    TakeEntry(&ucs, record.groups, TakeUcsGroup);
    if (ucs.name.empty() || !reading.ucsNames.insert(ucs.name).second)
        throw EntityRefused{
            record.line, "a name of its own was expected for the coordinate system " + ShownName(ucs.name)};
    KeepLeftovers(reading, record, &ucs);
    reading.data.namedUcs.push_back(std::move(ucs));
}

void ReadTableHead(Reading& reading, const Record& record) {
    const std::string name = NameOf(reading, record.groups);
    reading.data.fileHandles.emplace("TABLE " + name, HandleIn(record.groups, 5));
    if (reading.KeepsRecords()) TableOf(reading, name).head = TextOfGroups(record.groups);
}

void ReadEntry(Reading& reading, const Record& record) {
    DrawingData& data = reading.data;
    const std::string_view kind = record.name;
    const Groups groups = record.groups;
    const auto name = [&] { return NameOf(reading, groups); };
    if (kind == "LAYER") {
        LayerData* const layer =
            NewEntry(reading, data.layers, reading.layerPlaces, LayerEntryName(reading, groups), record.line);
        TakeEntry(layer, groups,
                  [&](LayerData& one, const Group& group) { TakeLayerGroup(reading, one, group); });
        KeepLeftovers(reading, record, layer);
    } else if (kind == "LTYPE") {
        LinetypeData* const linetype =
            NewEntry(reading, data.linetypes, reading.linetypePlaces, name(), record.line);
        TakeEntry(linetype, groups,
                  [&](LinetypeData& one, const Group& group) { TakeLinetypeGroup(reading, one, group); });
        KeepWhole(reading, record, linetype);
    } else if (kind == "STYLE" && !name().empty()) {
        TextStyleData* const style = NewEntry(reading, data.styles, reading.stylePlaces, name(), record.line);
        TakeEntry(style, groups,
                  [&](TextStyleData& one, const Group& group) { TakeStyleGroup(reading, one, group); });
        KeepWhole(reading, record, style);
    } else if (kind == "UCS") {
        ReadUcs(reading, record);
    } else if (kind == "APPID") {
        ReadApplication(reading, groups);
        if (reading.KeepsRecords()) KeepEntry(reading, record);
    } else if (kind == "BLOCK_RECORD") {
        ReadBlockRecord(reading, groups);
    } else if (kind == "TABLE") {
        ReadTableHead(reading, record);
    } else if (kind != "ENDTAB") {
        if (kind == "DIMSTYLE" && EqualsIgnoreCase(name(), "Standard"))
            data.fileHandles.emplace("DIMSTYLE", HandleIn(groups, 105));
        if (kind == "VPORT" && EqualsIgnoreCase(name(), "*Active"))
            data.fileHandles.emplace("VPORT", HandleIn(groups, 5));
        // A style without a name is a shape file, which texts don't use.
        KeepEntry(reading, record);
    }
}

}  // namespace

std::string CanonicalBlockName(std::string name) {
    if (EqualsIgnoreCase(name, ModelSpaceName) || EqualsIgnoreCase(name, "$MODEL_SPACE"))
        return std::string(ModelSpaceName);
    if (EqualsIgnoreCase(name, PaperSpaceName) || EqualsIgnoreCase(name, "$PAPER_SPACE"))
        return std::string(PaperSpaceName);
    return name;
}

void ReadTableEntry(Reading& reading, const Record& record) {
    try {
        ReadEntry(reading, record);
    } catch (const EntityRefused& refused) {
        reading.Note(refused.line, "table entry " + std::string(ShownName(record.name)) +
                                       " taken over in part or not: " + refused.reason);
    }
}

}  // namespace brenvik
