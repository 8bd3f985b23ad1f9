// The sections TABLES and BLOCKS.
#include <algorithm>
#include <array>

#include "base/handle_text.h"
#include "base/letter_case.h"
#include "drafting_host/dxf/data/kept_text.h"
#include "drafting_host/dxf/writing/writing.h"

namespace brenvik {
namespace {

/// The head of a table as it was read, with the number of its entries now.
std::string HeadOf(const KeptTable& table, std::size_t count, HandleValue handle) {
    std::string head;
    bool isCounted = false;
    const std::string owned = WithOwner(table.head, 0, handle);
    GroupWalk walk(owned);
    while (walk.Next()) {
        if (walk.Code() == 70 && !isCounted) {
            AppendGroup(head, 70, std::to_string(count));
            isCounted = true;
        } else {
            head += walk.Text();
        }
    }
    if (!isCounted) AppendGroup(head, 70, std::to_string(count));
    return head;
}

void BeginTable(GroupWriter& out, WritePlan& plan, const std::string& name, std::size_t count) {
    out.Word(0, "TABLE");
    if (const KeptTable* const kept = plan.FindTable(name); kept != nullptr && !kept->head.empty()) {
        const HandleValue handle = plan.FileHandle("TABLE " + name);
        out.Raw(plan.Fit("TABLE", HeadOf(*kept, count, handle)));
        return;
    }
    out.Word(2, name);
    out.HandleGroup(5, plan.FileHandle("TABLE " + name));
    out.HandleGroup(330, 0);
    out.Word(100, "AcDbSymbolTable");
    out.Whole(70, static_cast<long>(count));
}

void EndTable(GroupWriter& out) { out.Word(0, "ENDTAB"); }

void BeginEntry(GroupWriter& out, WritePlan& plan, const std::string& table, HandleValue handle,
                std::string_view className, int handleCode = 5, const KeptGroups* kept = nullptr) {
    out.Word(0, table);
    out.HandleGroup(handleCode, handle);
    if (kept != nullptr) WriteKept(out, plan, table, kept->head);
    out.HandleGroup(330, plan.FileHandle("TABLE " + table));
    out.Word(100, "AcDbSymbolTableRecord");
    out.Word(100, className);
}

void EndEntry(GroupWriter& out, WritePlan& plan, std::string_view table, const KeptGroups* kept) {
    if (kept == nullptr) return;
    WriteKept(out, plan, table, kept->own);
    WriteKept(out, plan, table, kept->further);
}

/// A dimension style names the blocks of its arrows before release 2000, and refers to their records since.
std::string WithArrowHandles(const WritePlan& plan, const std::string& groups) {
    constexpr int firstArrow = 5, lastArrow = 7, firstHandle = 342;
    std::string result;
    GroupWalk walk(groups);
    while (walk.Next()) {
        const int code = walk.Code();
        if (code < firstArrow || code > lastArrow)
            result += walk.Text();
        else if (const WritePlan::BlockPlan* const arrow = plan.FindBlock(walk.Value()); arrow != nullptr)
            AppendGroup(result, firstHandle + code - firstArrow, HandleToText(arrow->record));
    }
    return result;
}

/// An entry as it was read.
void WriteWhole(GroupWriter& out, WritePlan& plan, const std::string& table, const KeptRecord& record,
                HandleValue handle) {
    out.Word(0, table);
    const std::string fit = plan.Fit(table, record.groups);
    const bool namesArrows = plan.IsRaised() && table == "DIMSTYLE";
    out.Raw(WithOwner(namesArrows ? WithArrowHandles(plan, fit) : fit, plan.FileHandle("TABLE " + table),
                      handle));
}

std::span<const KeptRecord> EntriesOf(const WritePlan& plan, std::string_view table) {
    const KeptTable* const kept = plan.FindTable(table);
    return kept == nullptr ? std::span<const KeptRecord>() : kept->entries;
}

/// The parts of a table that the drawing has no value for.
void WriteUnread(GroupWriter& out, WritePlan& plan, const std::string& table) {
    for (const KeptRecord& entry : EntriesOf(plan, table)) WriteWhole(out, plan, table, entry, entry.handle);
}

bool HasKept(const WritePlan& plan, std::string_view table, HandleValue handle) {
    const auto entries = EntriesOf(plan, table);
    return std::ranges::find(entries, handle, &KeptRecord::handle) != entries.end();
}

// One view of the whole screen, from above, in the world's axes.
void WriteViewports(GroupWriter& out, WritePlan& plan) {
    if (const auto kept = EntriesOf(plan, "VPORT"); !kept.empty()) {
        BeginTable(out, plan, "VPORT", kept.size());
        WriteUnread(out, plan, "VPORT");
        EndTable(out);
        return;
    }
    BeginTable(out, plan, "VPORT", 1);
    BeginEntry(out, plan, "VPORT", plan.FileHandle("VPORT"), "AcDbViewportTableRecord");
    out.Word(2, "*Active");
    out.Whole(70, 0);
    struct FlatPoint {
        int code;
        double x, y;
    };
    // Corners, centre, snap base and spacing, grid spacing.
    for (const FlatPoint& point : {FlatPoint{10, 0, 0}, FlatPoint{11, 1, 1}, FlatPoint{12, 0, 0},
                                   FlatPoint{13, 0, 0}, FlatPoint{14, 1, 1}, FlatPoint{15, 0, 0}}) {
        out.Real(point.code, point.x);
        out.Real(point.code + 10, point.y);
    }
    out.Point(16, {0, 0, 1});
    out.Point(17, {0, 0, 0});
    out.Real(40, 1000);  // height of the view
    out.Real(41, 1.5);   // its width over its height
    out.Real(42, 50);
    for (const int code : {43, 44, 50, 51}) out.Real(code, 0);
    out.Whole(71, 0);
    out.Whole(72, 1000);
    out.Whole(73, 1);
    out.Whole(74, 3);
    for (const int code : {75, 76, 77, 78}) out.Whole(code, 0);
    EndTable(out);
}

void WriteLinetypes(GroupWriter& out, WritePlan& plan) {
    BeginTable(out, plan, "LTYPE", plan.Tables().linetypes.size());
    for (const LinetypeData& linetype : plan.Tables().linetypes) {
        if (linetype.kept) {
            WriteWhole(out, plan, "LTYPE", *linetype.kept, linetype.handle);
            continue;
        }
        out.SetPlace("linetype " + linetype.name);
        BeginEntry(out, plan, "LTYPE", linetype.handle, "AcDbLinetypeTableRecord");
        out.Text(2, linetype.name);
        out.Whole(70, 0);
        out.Text(3, linetype.description);
        out.Whole(72, 65);
        out.Whole(73, static_cast<long>(linetype.dashes.size()));
        out.Real(40, linetype.patternLength);
        for (const double dash : linetype.dashes) {
            out.Real(49, dash);
            out.Whole(74, 0);
        }
    }
    EndTable(out);
}

int ColorOf(const LayerData& layer) {
    constexpr int lastColor = 255, usualColor = 7;
    const int color = layer.color >= 1 && layer.color <= lastColor ? layer.color : usualColor;
    return layer.on ? color : -color;
}

void WriteLayers(GroupWriter& out, WritePlan& plan) {
    BeginTable(out, plan, "LAYER", plan.Tables().layers.size());
    for (const LayerData& layer : plan.Tables().layers) {
        const KeptGroups* const kept = layer.kept.value.get();
        BeginEntry(out, plan, "LAYER", layer.handle, "AcDbLayerTableRecord", 5, kept);
        out.Text(2, layer.name);
        out.Whole(70, (layer.frozen ? 1 : 0) | (layer.locked ? 4 : 0) | (kept == nullptr ? 0 : kept->flags));
        out.Whole(62, ColorOf(layer));
        out.Text(6, layer.linetype);
        if (!layer.plottable) out.Whole(290, 0);
        out.Whole(370, layer.lineweight);
        // A layer that was read has its own plot style, or none.
        if (kept == nullptr || plan.IsRaised() || plan.File() == nullptr)
            out.HandleGroup(390, plan.FileHandle("ACAD_PLOTSTYLENAME Normal"));
        EndEntry(out, plan, "LAYER", kept);
    }
    EndTable(out);
}

void WriteStyles(GroupWriter& out, WritePlan& plan) {
    BeginTable(out, plan, "STYLE", plan.Tables().styles.size() + EntriesOf(plan, "STYLE").size());
    for (const TextStyleData& style : plan.Tables().styles) {
        if (style.kept) {
            WriteWhole(out, plan, "STYLE", *style.kept, style.handle);
            continue;
        }
        out.SetPlace("text style " + style.name);
        BeginEntry(out, plan, "STYLE", style.handle, "AcDbTextStyleTableRecord");
        out.Text(2, style.name);
        out.Whole(70, style.flags);
        out.Real(40, style.height);
        out.Real(41, style.widthFactor);
        out.Degrees(50, style.oblique);
        out.Whole(71, style.generation);
        out.Real(42, style.height > 0 ? style.height : 1);
        out.Text(3, style.font);
        out.Text(4, style.bigFont);
    }
    WriteUnread(out, plan, "STYLE");
    EndTable(out);
}

void WriteUcs(GroupWriter& out, WritePlan& plan) {
    BeginTable(out, plan, "UCS", plan.Tables().namedUcs.size());
    for (const UcsData& ucs : plan.Tables().namedUcs) {
        out.SetPlace("coordinate system " + ucs.name);
        const KeptGroups* const kept = ucs.kept.value.get();
        BeginEntry(out, plan, "UCS", ucs.handle, "AcDbUCSTableRecord", 5, kept);
        out.Text(2, ucs.name);
        out.Whole(70, 0);
        out.Point(10, ucs.origin);
        out.Point(11, ucs.xAxis);
        out.Point(12, ucs.yAxis);
        EndEntry(out, plan, "UCS", kept);
    }
    EndTable(out);
}

void WriteApplications(GroupWriter& out, WritePlan& plan) {
    BeginTable(out, plan, "APPID", plan.Tables().applications.size());
    const auto entries = EntriesOf(plan, "APPID");
    for (const std::string& name : plan.Tables().applications) {
        const HandleValue handle = plan.FileHandle("APPID " + name);
        const auto kept = std::ranges::find(entries, handle, &KeptRecord::handle);
        if (kept != entries.end()) {
            WriteWhole(out, plan, "APPID", *kept, handle);
            continue;
        }
        BeginEntry(out, plan, "APPID", handle, "AcDbRegAppTableRecord");
        out.Text(2, name);
        out.Whole(70, 0);
    }
    EndTable(out);
}

void WriteDimensionStyles(GroupWriter& out, WritePlan& plan) {
    const auto entries = EntriesOf(plan, "DIMSTYLE");
    const bool hasStandard = !entries.empty() && HasKept(plan, "DIMSTYLE", plan.FileHandle("DIMSTYLE"));
    const KeptTable* const table = plan.FindTable("DIMSTYLE");
    BeginTable(out, plan, "DIMSTYLE", entries.size() + (hasStandard ? 0 : 1));
    if (table == nullptr || table->head.find("AcDbDimStyleTable") == std::string::npos)
        out.Word(100, "AcDbDimStyleTable");
    WriteUnread(out, plan, "DIMSTYLE");
    if (hasStandard) return EndTable(out);
    BeginEntry(out, plan, "DIMSTYLE", plan.FileHandle("DIMSTYLE"), "AcDbDimStyleTableRecord", 105);
    out.Word(2, "Standard");
    out.Whole(70, 0);
    out.HandleGroup(340, plan.StyleHandle());
    EndTable(out);
}

void WriteBlockRecords(GroupWriter& out, WritePlan& plan) {
    BeginTable(out, plan, "BLOCK_RECORD", plan.Blocks().size());
    for (const WritePlan::BlockPlan& block : plan.Blocks()) {
        const KeptGroups* const kept = block.block->kept ? &block.block->kept->record : nullptr;
        BeginEntry(out, plan, "BLOCK_RECORD", block.record, "AcDbBlockTableRecord", 5, kept);
        out.Text(2, block.block->name);
        out.HandleGroup(340, block.isSpace ? plan.FileHandle("LAYOUT " + block.block->name) : 0);
        EndEntry(out, plan, "BLOCK_RECORD", kept);
    }
    EndTable(out);
}

void WriteBlockEnd(GroupWriter& out, std::string_view name, HandleValue handle, HandleValue record,
                   bool isPaper, std::string_view className) {
    out.Word(0, name);
    out.HandleGroup(5, handle);
    out.HandleGroup(330, record);
    out.Word(100, "AcDbEntity");
    if (isPaper) out.Whole(67, 1);
    out.Word(8, "0");
    out.Word(100, className);
}

// Entities of model space and of the paper space in use stand in the section ENTITIES.
bool StandsInEntities(const WritePlan& plan, const WritePlan::BlockPlan& block) {
    return &block == &plan.Blocks()[0] || &block == &plan.Blocks()[1];
}

void WriteBlock(GroupWriter& out, WritePlan& plan, const WritePlan::BlockPlan& block) {
    const std::string& name = block.block->name;
    const bool isPaper = block.isSpace && &block != &plan.Blocks()[0];
    out.SetPlace("block " + name);
    const KeptBlock* const kept = block.block->kept.value.get();
    if (kept != nullptr && !kept->begin.empty() && !kept->end.empty() && !plan.IsRaised()) {
        const auto write = [&](const std::string& word, const std::string& groups) {
            out.Word(0, word);
            out.Raw(WithOwner(plan.Fit(word, groups), block.record, plan.FileHandle(word + " " + name)));
        };
        write("BLOCK", kept->begin);
        if (!StandsInEntities(plan, block)) WriteEntitiesOf(out, plan, block);
        write("ENDBLK", kept->end);
        return;
    }
    WriteBlockEnd(out, "BLOCK", plan.FileHandle("BLOCK " + name), block.record, isPaper, "AcDbBlockBegin");
    out.Text(2, name);
    out.Whole(70, block.block->flags & 1);
    out.Point(10, block.block->base);
    out.Text(3, name);
    out.Word(1, "");
    if (!StandsInEntities(plan, block)) WriteEntitiesOf(out, plan, block);
    WriteBlockEnd(out, "ENDBLK", plan.FileHandle("ENDBLK " + name), block.record, isPaper, "AcDbBlockEnd");
}

// Tables of a kind that isn't known here, such as the one of viewport entities before release 2000.
void WriteFurtherTables(GroupWriter& out, WritePlan& plan) {
    constexpr auto known = std::to_array<std::string_view>(
        {"VPORT", "LTYPE", "LAYER", "STYLE", "VIEW", "UCS", "APPID", "DIMSTYLE", "BLOCK_RECORD"});
    if (plan.File() == nullptr) return;
    for (const KeptTable& table : plan.File()->tables) {
        if (table.name.empty() || std::ranges::find(known, table.name) != known.end()) continue;
        BeginTable(out, plan, table.name, table.entries.size());
        for (const KeptRecord& entry : table.entries) WriteWhole(out, plan, table.name, entry, entry.handle);
        EndTable(out);
    }
}

}  // namespace

void WriteTables(GroupWriter& out, WritePlan& plan) {
    BeginSection(out, "TABLES");
    WriteViewports(out, plan);
    WriteLinetypes(out, plan);
    WriteLayers(out, plan);
    WriteStyles(out, plan);
    BeginTable(out, plan, "VIEW", EntriesOf(plan, "VIEW").size());
    WriteUnread(out, plan, "VIEW");
    EndTable(out);
    WriteUcs(out, plan);
    WriteApplications(out, plan);
    WriteDimensionStyles(out, plan);
    WriteBlockRecords(out, plan);
    WriteFurtherTables(out, plan);
    EndSection(out);
}

void WriteBlocks(GroupWriter& out, WritePlan& plan) {
    BeginSection(out, "BLOCKS");
    for (const WritePlan::BlockPlan& block : plan.Blocks()) WriteBlock(out, plan, block);
    EndSection(out);
}

void WriteEntities(GroupWriter& out, const WritePlan& plan) {
    BeginSection(out, "ENTITIES");
    WriteEntitiesOf(out, plan, plan.Blocks()[0]);
    WriteEntitiesOf(out, plan, plan.Blocks()[1]);
    EndSection(out);
}

}  // namespace brenvik
