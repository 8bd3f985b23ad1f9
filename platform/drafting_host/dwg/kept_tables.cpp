#include "drafting_host/dwg/kept_tables.h"

#include <algorithm>
#include <utility>

#include "base/handle_text.h"
#include "base/letter_case.h"
#include "drafting_host/dwg/entities.h"
#include "drafting_host/dwg/record_checks.h"
#include "drafting_host/dwg/table_data.h"
#include "drafting_host/dxf/data/kept_text.h"
#include "drafting_host/dxf/data/standard_entries.h"

namespace brenvik::dwg {
namespace {

KeptTable& TableOf(KeptFile& file, std::string_view name) {
    for (KeptTable& table : file.tables)
        if (table.name == name) return table;
    file.tables.push_back({std::string(name), {}, {}});
    return file.tables.back();
}

}  // namespace

void KeptTables::AddLinetype(std::size_t place, std::string groups, std::vector<RawXData> data) {
    mLinetypes.push_back({place, "LTYPE", 0, std::move(groups), std::move(data)});
}

void KeptTables::AddStyle(std::size_t place, std::string groups, std::vector<RawXData> data) {
    mStyles.push_back({place, "STYLE", 0, std::move(groups), std::move(data)});
}

void KeptTables::AddEntry(std::string_view table, HandleValue handle, std::string groups,
                          std::vector<RawXData> data) {
    mEntries.push_back({0, table, handle, std::move(groups), std::move(data)});
}

void KeptTables::HandOver(Reading& reading, const Names& names, const NamedXData& named, Links& links) {
    const auto recordOf = [&](const Entry& entry, HandleValue handle) {
        const std::string data = GroupsOfXData(named(entry.table, handle, entry.data));
        return KeptRecord{std::string(entry.table), handle, 0, entry.groups + data};
    };
    const auto fill = [&](auto& entries, const std::vector<Entry>& kept) {
        for (const Entry& entry : kept) {
            auto& target = entries[entry.place];
            target.kept = {std::make_shared<const KeptRecord>(recordOf(entry, target.handle))};
        }
    };
    fill(reading.data.linetypes, mLinetypes);
    fill(reading.data.styles, mStyles);
    constexpr int styleOfDash = 340;
    for (const Entry& entry : mLinetypes) {
        GroupWalk walk(entry.groups);
        while (walk.Next())
            if (walk.Code() == styleOfDash && !names.styles.contains(walk.Handle()))
                links.Drop("a text style", walk.Handle(),
                           {"LTYPE", reading.data.linetypes[entry.place].handle});
    }
    for (const Entry& entry : mEntries) {
        if (const std::string doubt = ImpossibleIn(entry.table, entry.groups); !doubt.empty())
            reading.Note(0, ShownHolder({entry.table, entry.handle}) + ": " + doubt);
        TableOf(reading.file, entry.table).entries.push_back(recordOf(entry, entry.handle));
    }
}

void KeepBlock(Reading& reading, const Block& block, std::string_view layer,
               const std::vector<RawXData>& data, const NamedXData& named) {
    constexpr int anonymous = 1, external = 4, overlay = 8;
    if (const std::string doubt = ImpossibleIn("BLOCK_RECORD", block.groups); !doubt.empty())
        reading.Note(0, ShownHolder({"block " + ShownName(block.name), block.record}) + ": " + doubt);
    KeptBlock& kept = reading.keptBlocks[block.name];
    kept.record.own = block.groups;
    kept.record.further = GroupsOfXData(named("block", block.record, block.xdata));
    const bool isPlain =
        block.description.empty() && block.drawing.empty() && !block.isExternal && data.empty();
    if (isPlain || IsSpace(block.name)) return;
    const int flags = (block.isAnonymous ? anonymous : 0) | (block.isExternal ? external : 0) |
                      (block.isOverlay ? overlay : 0);
    GroupText begin;
    begin.Handle(5, 0).Handle(330, 0).Text(100, "AcDbEntity").Text(8, layer).Text(100, "AcDbBlockBegin");
    begin.Text(2, block.name).Whole(70, flags).Point(10, block.base).Text(3, block.name);
    begin.Text(1, block.drawing);
    if (!block.description.empty()) begin.Text(4, block.description);
    begin.Raw(GroupsOfXData(named("block", block.record, data)));
    kept.begin = begin.Take();
    GroupText end;
    end.Handle(5, 0).Handle(330, 0).Text(100, "AcDbEntity").Text(8, layer).Text(100, "AcDbBlockEnd");
    kept.end = end.Take();
}

void KeepLayout(Reading& reading, const Layout& layout, const Block& block, const NamedXData& named) {
    reading.layoutOfBlock.emplace(block.name, layout.name);
    if (layout.groups.empty()) return;
    reading.data.fileHandles.emplace("DICTIONARY ACAD_LAYOUT", layout.dictionary);
    reading.data.fileHandles.emplace("LAYOUT " + block.name, layout.handle);
    GroupText groups;
    groups.Handle(5, layout.handle).Text(102, "{ACAD_REACTORS").Handle(330, layout.dictionary).Text(102, "}");
    groups.Handle(330, layout.dictionary).Raw(layout.groups).Handle(330, block.record);
    groups.Raw(GroupsOfXData(named("sheet", layout.handle, layout.xdata)));
    // Its owner, the dictionary, is written anew under the same handle.
    reading.file.objects.push_back({"LAYOUT", layout.handle, 0, groups.Take()});
}

namespace {

/// Blocks of arrows are named without the mark that their own names begin with.
std::string ArrowName(std::string name) { return name.starts_with('_') ? name.substr(1) : name; }

std::string NamedBy(const Header::Reference& reference, const Names& names, Links& links) {
    const Holder holder{reference.name};
    switch (reference.table) {
        case Header::Table::Styles:
            return links.NamedIfAny(names.styles, reference.handle, "Standard", "a text style", holder);
        case Header::Table::Linetypes:
            return links.NamedIfAny(names.linetypes, reference.handle,
                                    reference.name == "$CELTYPE" ? "ByLayer" : "", "a line type", holder);
        case Header::Table::Blocks:
            return ArrowName(links.NamedIfAny(names.blockNames, reference.handle, "", "a block", holder));
        case Header::Table::Ucs:
            break;
    }
    return links.NamedIfAny(names.ucs, reference.handle, "", "a coordinate system", holder);
}

}  // namespace

void KeepVariables(Reading& reading, const Header& header, const Names& names, unsigned maintenance,
                   Links& links) {
    constexpr int longMaintenance = 1032;
    auto& kept = reading.file.header;
    kept.emplace_back("$ACADVER", "");  // written by the release of the saving, at its place in front
    const bool isLong = reading.file.release >= longMaintenance;
    kept.emplace_back("$ACADMAINTVER",
                      GroupText().Whole(isLong ? 90 : 70, static_cast<long>(maintenance)).Take());
    for (const auto& [name, groups] : header.variables) kept.emplace_back(name, groups);
    for (const Header::Reference& reference : header.references)
        kept.emplace_back(reference.name,
                          GroupText().Text(reference.code, NamedBy(reference, names, links)).Take());
}

}  // namespace brenvik::dwg
