// The section OBJECTS: the dictionaries, groups, layouts, and the two objects that strict readers look for
// (the plot style placeholder and the multiline style).
#include <algorithm>
#include <map>
#include <numbers>
#include <set>

#include "base/handle_text.h"
#include "drafting_host/dxf/data/kept_text.h"
#include "drafting_host/dxf/texts/dxf_text.h"
#include "drafting_host/dxf/writing/writing.h"

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
    for (const HandleValue member : group.members)
        if (plan.IsEntity(member)) out.HandleGroup(340, member);
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

void WriteDictionary(GroupWriter& out, WritePlan& plan, const std::string& name) {
    const bool hasDefault = name == "ACAD_PLOTSTYLENAME";
    BeginDictionary(out, hasDefault ? "ACDBDICTIONARYWDFLT" : "DICTIONARY",
                    plan.FileHandle("DICTIONARY " + name), plan.FileHandle("DICTIONARY"));
    if (name == "ACAD_GROUP") {
        for (const GroupData& group : plan.Tables().groups) WriteEntry(out, group.name, group.handle);
    } else if (name == "ACAD_LAYOUT") {
        for (const WritePlan::BlockPlan& block : plan.Blocks()) {
            if (block.isSpace)
                WriteEntry(out, block.layoutName, plan.FileHandle("LAYOUT " + block.block->name));
        }
    } else if (name == "ACAD_MLINESTYLE") {
        WriteEntry(out, "Standard", plan.FileHandle("ACAD_MLINESTYLE Standard"));
    } else {
        const HandleValue placeholder = plan.FileHandle("ACAD_PLOTSTYLENAME Normal");
        WriteEntry(out, "Normal", placeholder);
        out.Word(100, "AcDbDictionaryWithDefault");
        out.HandleGroup(340, placeholder);
    }
}

/// Writes the objects of the file that was read, with what came to be since, and then what they lack.
class ObjectWriter {
  public:
    ObjectWriter(GroupWriter& out, WritePlan& plan) : mOut(out), mPlan(plan) {
        if (plan.File() == nullptr) return;
        for (const KeptRecord& object : plan.File()->objects)
            if (!plan.IsGone(object.handle)) mKept.insert(object.handle);
        if (plan.IsRaised()) FindOwners();
    }

    void Write() {
        if (!mKept.empty()) AddEntries();
        // The root has to stand first.
        if (!Has("DICTIONARY")) WriteRoot(mOut, mPlan);
        if (mPlan.File() != nullptr) {
            for (const KeptRecord& object : mPlan.File()->objects)
                if (!mPlan.IsGone(object.handle)) WriteRead(object);
        }
        WriteDictionaries();
        for (const GroupData& group : mPlan.Tables().groups)
            if (!mKept.contains(group.handle)) WriteGroup(mOut, mPlan, group);
        int tabOrder = 0;
        for (const WritePlan::BlockPlan& block : mPlan.Blocks()) {
            if (!block.isSpace) continue;
            if (!Has("LAYOUT " + block.block->name)) WriteLayout(mOut, mPlan, block, tabOrder);
            ++tabOrder;
        }
        if (!Has("ACAD_MLINESTYLE Standard")) WriteMultilineStyle(mOut, mPlan);
        if (Has("ACAD_PLOTSTYLENAME Normal")) return;
        BeginObject(mOut, "ACDBPLACEHOLDER", mPlan.FileHandle("ACAD_PLOTSTYLENAME Normal"),
                    mPlan.FileHandle("DICTIONARY ACAD_PLOTSTYLENAME"));
    }

  private:
    bool Has(const std::string& what) { return !mKept.empty() && mKept.contains(mPlan.FileHandle(what)); }

    void Add(const std::string& dictionary, std::string_view entry, HandleValue handle) {
        if (mKept.contains(handle)) return;
        std::string& added = mAdded[mPlan.FileHandle(dictionary)];
        AppendGroup(added, 3, EncodeText(entry));
        AppendGroup(added, 350, HandleToText(handle));
    }

    /// What the dictionaries that were read lack.
    void AddEntries() {
        for (const std::string name : {"ACAD_GROUP", "ACAD_LAYOUT", "ACAD_MLINESTYLE", "ACAD_PLOTSTYLENAME"})
            Add("DICTIONARY", name, mPlan.FileHandle("DICTIONARY " + name));
        for (const GroupData& group : mPlan.Tables().groups)
            Add("DICTIONARY ACAD_GROUP", group.name, group.handle);
        for (const WritePlan::BlockPlan& block : mPlan.Blocks()) {
            if (block.isSpace)
                Add("DICTIONARY ACAD_LAYOUT", block.layoutName,
                    mPlan.FileHandle("LAYOUT " + block.block->name));
        }
        Add("DICTIONARY ACAD_MLINESTYLE", "Standard", mPlan.FileHandle("ACAD_MLINESTYLE Standard"));
        Add("DICTIONARY ACAD_PLOTSTYLENAME", "Normal", mPlan.FileHandle("ACAD_PLOTSTYLENAME Normal"));
    }

    void WriteDictionaries() {
        for (const std::string name :
             {"ACAD_GROUP", "ACAD_LAYOUT", "ACAD_MLINESTYLE", "ACAD_PLOTSTYLENAME"}) {
            if (!Has("DICTIONARY " + name)) WriteDictionary(mOut, mPlan, name);
        }
    }

    /// Before release 2000 only dictionaries say what belongs to them.
    void FindOwners() {
        for (const KeptRecord& object : mPlan.File()->objects) {
            if (object.name != "DICTIONARY") continue;
            GroupWalk walk(object.groups);
            while (walk.Next())
                if (walk.Code() == 350 || walk.Code() == 360) mOwners.emplace(walk.Handle(), object.handle);
        }
    }

    void WriteRead(const KeptRecord& object) {
        mOut.Word(0, object.name);
        std::string groups = mPlan.Fit(object.name, object.groups);
        if (const auto added = mAdded.find(object.handle); added != mAdded.end())
            groups = WithEntries(groups, added->second);
        if (object.name == "GROUP") groups = WithMembers(object, groups);
        if (const auto owner = mOwners.find(object.handle); owner != mOwners.end() && object.owner == 0)
            groups = WithOwner(groups, owner->second);
        mOut.Raw(groups);
    }

    /// A dictionary's new entries stand behind the others, and before what another class adds to it. A
    /// bracket that was left open would hide them, and each saving would add them again.
    static std::string WithEntries(const std::string& groups, const std::string& added) {
        std::size_t end = 0, at = 0;
        bool isDictionary = false, inBrackets = false;
        GroupWalk walk(groups);
        while (walk.Next()) {
            at += walk.Text().size();
            const int code = walk.Code();
            if (code >= 1000 || (code == 100 && isDictionary)) break;
            if (code == 100) isDictionary = true;
            if (code == 102) inBrackets = WithoutBlanks(walk.Value()).starts_with('{');
            end = at;
        }
        std::string closing;
        if (inBrackets) AppendGroup(closing, 102, "}");
        return groups.substr(0, end) + closing + added + groups.substr(end);
    }

    /// The members that are left, those that go through unread, and new ones at the end.
    std::string WithMembers(const KeptRecord& object, const std::string& groups) const {
        const auto& all = mPlan.Tables().groups;
        const auto group = std::ranges::find(all, object.handle, &GroupData::handle);
        if (group == all.end()) return groups;
        std::set<HandleValue> members(group->members.begin(), group->members.end()), written;
        std::string result, tail;
        GroupWalk walk(groups);
        bool isBehind = false;
        while (walk.Next()) {
            isBehind = isBehind || walk.Code() >= 1000;
            if (walk.Code() == 340) {
                const HandleValue member = walk.Handle();
                if (mPlan.IsEntity(member) && !members.contains(member)) continue;
                written.insert(member);
            }
            (isBehind ? tail : result) += walk.Text();
        }
        for (const HandleValue member : group->members) {
            if (mPlan.IsEntity(member) && written.insert(member).second)
                AppendGroup(result, 340, HandleToText(member));
        }
        return result + tail;
    }

    GroupWriter& mOut;
    WritePlan& mPlan;
    std::set<HandleValue> mKept;
    std::map<HandleValue, std::string> mAdded;
    std::map<HandleValue, HandleValue> mOwners;
};

}  // namespace

void WriteObjects(GroupWriter& out, WritePlan& plan) {
    BeginSection(out, "OBJECTS");
    ObjectWriter(out, plan).Write();
    EndSection(out);
}

}  // namespace brenvik
