// The section OBJECTS: the dictionaries, groups, layouts, and the two objects that strict readers look for
// (the plot style placeholder and the multiline style).
#include "drafting_host/dxf/writing.h"

#include <numbers>

namespace brenvik {
namespace {

void BeginObject(GroupWriter& out, std::string_view name, HandleValue handle, HandleValue owner) {
    out.Word(0, name);
    out.HandleGroup(5, handle);
    if (owner != 0) {
        out.Word(102, "{ACAD_REACTORS");
        out.HandleGroup(330, owner);
        out.Word(102, "}");
    }
    out.HandleGroup(330, owner);
}

void BeginDictionary(GroupWriter& out, std::string_view name, HandleValue handle, HandleValue owner) {
    BeginObject(out, name, handle, owner);
    out.Word(100, "AcDbDictionary");
    out.Whole(281, 1);
}

void WriteEntry(GroupWriter& out, std::string_view name, HandleValue handle) {
    out.Text(3, name);
    out.HandleGroup(350, handle);
}

void WriteGroup(GroupWriter& out, WritePlan& plan, const GroupData& group) {
    BeginObject(out, "GROUP", group.handle, plan.FileHandle("DICTIONARY ACAD_GROUP"));
    out.Word(100, "AcDbGroup");
    out.Text(300, group.description);
    out.Whole(70, group.name.starts_with("*A") ? 1 : 0);  // nameless
    out.Whole(71, group.selectable ? 1 : 0);
    for (const HandleValue member : group.members) {
        if (plan.IsEntity(member)) out.HandleGroup(340, member);
    }
}

void WritePlotSettings(GroupWriter& out, bool isModel) {
    constexpr int modelFlags = 1712, paperFlags = 688;
    out.Word(100, "AcDbPlotSettings");
    out.Word(1, "");
    out.Word(2, "none_device");
    out.Word(4, "");
    out.Word(6, "");
    for (const int code : {40, 41, 42, 43, 44, 45, 46, 47, 48, 49, 140, 141}) out.Real(code, 0);
    out.Real(142, 1);
    out.Real(143, 1);
    out.Whole(70, isModel ? modelFlags : paperFlags);
    out.Whole(72, 1);
    out.Whole(73, 0);
    out.Whole(74, isModel ? 0 : 5);
    out.Word(7, "");
    out.Whole(75, isModel ? 0 : 16);
    out.Real(147, 1);
    out.Real(148, 0);
    out.Real(149, 0);
}

void WriteLayout(GroupWriter& out, WritePlan& plan, const WritePlan::BlockPlan& block, int tabOrder) {
    constexpr double nothingYet = 1e20;  // extents are turned inside out until something is drawn
    BeginObject(out, "LAYOUT", plan.FileHandle("LAYOUT " + block.block->name),
                plan.FileHandle("DICTIONARY ACAD_LAYOUT"));
    WritePlotSettings(out, tabOrder == 0);
    out.Word(100, "AcDbLayout");
    out.Text(1, block.layoutName);
    out.Whole(70, 1);
    out.Whole(71, tabOrder);
    out.Real(10, 0);
    out.Real(20, 0);
    out.Real(11, 420);
    out.Real(21, 297);
    out.Point(12, {});
    out.Point(14, {nothingYet, nothingYet, nothingYet});
    out.Point(15, {-nothingYet, -nothingYet, -nothingYet});
    out.Real(146, 0);
    out.Point(13, {});
    out.Point(16, {1, 0, 0});
    out.Point(17, {0, 1, 0});
    out.Whole(76, 0);
    out.HandleGroup(330, block.record);
}

void WriteMultilineStyle(GroupWriter& out, WritePlan& plan) {
    BeginObject(out, "MLINESTYLE", plan.FileHandle("ACAD_MLINESTYLE Standard"),
                plan.FileHandle("DICTIONARY ACAD_MLINESTYLE"));
    out.Word(100, "AcDbMlineStyle");
    out.Word(2, "Standard");
    out.Whole(70, 0);
    out.Word(3, "");
    out.Whole(62, 256);
    out.Degrees(51, std::numbers::pi / 2);
    out.Degrees(52, std::numbers::pi / 2);
    out.Whole(71, 2);
    for (const double offset : {0.5, -0.5}) {
        out.Real(49, offset);
        out.Whole(62, 256);
        out.Word(6, "BYLAYER");
    }
}

void WriteRoot(GroupWriter& out, WritePlan& plan) {
    BeginDictionary(out, "DICTIONARY", plan.FileHandle("DICTIONARY"), 0);
    for (const std::string name : {"ACAD_GROUP", "ACAD_LAYOUT", "ACAD_MLINESTYLE", "ACAD_PLOTSTYLENAME"})
        WriteEntry(out, name, plan.FileHandle("DICTIONARY " + name));
}

void WriteDictionaries(GroupWriter& out, WritePlan& plan) {
    const HandleValue root = plan.FileHandle("DICTIONARY");
    const auto begin = [&](const std::string& name, std::string_view kind = "DICTIONARY") {
        BeginDictionary(out, kind, plan.FileHandle("DICTIONARY " + name), root);
    };
    begin("ACAD_GROUP");
    for (const GroupData& group : plan.Tables().groups) WriteEntry(out, group.name, group.handle);
    begin("ACAD_LAYOUT");
    for (const WritePlan::BlockPlan& block : plan.Blocks()) {
        if (block.isSpace) WriteEntry(out, block.layoutName, plan.FileHandle("LAYOUT " + block.block->name));
    }
    begin("ACAD_MLINESTYLE");
    WriteEntry(out, "Standard", plan.FileHandle("ACAD_MLINESTYLE Standard"));
    begin("ACAD_PLOTSTYLENAME", "ACDBDICTIONARYWDFLT");
    const HandleValue placeholder = plan.FileHandle("ACAD_PLOTSTYLENAME Normal");
    WriteEntry(out, "Normal", placeholder);
    out.Word(100, "AcDbDictionaryWithDefault");
    out.HandleGroup(340, placeholder);
}

}  // namespace

void WriteObjects(GroupWriter& out, WritePlan& plan) {
    BeginSection(out, "OBJECTS");
    WriteRoot(out, plan);
    WriteDictionaries(out, plan);
    for (const GroupData& group : plan.Tables().groups) WriteGroup(out, plan, group);
    int tabOrder = 0;
    for (const WritePlan::BlockPlan& block : plan.Blocks()) {
        if (block.isSpace) WriteLayout(out, plan, block, tabOrder++);
    }
    WriteMultilineStyle(out, plan);
    BeginObject(out, "ACDBPLACEHOLDER", plan.FileHandle("ACAD_PLOTSTYLENAME Normal"),
                plan.FileHandle("DICTIONARY ACAD_PLOTSTYLENAME"));
    EndSection(out);
}

}  // namespace brenvik
