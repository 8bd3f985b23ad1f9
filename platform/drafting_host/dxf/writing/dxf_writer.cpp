// The file as a whole: the order of sections, the header, the classes.
#include "drafting_host/dxf/writing/dxf_writer.h"

#include <algorithm>
#include <array>
#include <functional>
#include <set>
#include <vector>

#include "base/byte_order_mark.h"
#include "base/letter_case.h"
#include "drafting_host/dxf/data/header_variables.h"
#include "drafting_host/dxf/data/kept_text.h"
#include "drafting_host/dxf/texts/code_pages.h"
#include "drafting_host/dxf/texts/dxf_text.h"
#include "drafting_host/dxf/writing/writing.h"

namespace brenvik {
namespace {

void WriteVariable(GroupWriter& out, std::string_view name, int code, std::string_view value) {
    out.Word(9, name);
    out.Text(code, value);
}

void WriteVariable(GroupWriter& out, std::string_view name, int code, long value) {
    out.Word(9, name);
    out.Whole(code, value);
}

void WriteVariable(GroupWriter& out, std::string_view name, const Point3& value) {
    out.Word(9, name);
    out.Point(10, value);
}

// Every text is written in ASCII, so any page is true; the drawing's own is kept where it is one.
std::string_view CodePageOf(const DrawingData& data) {
    const int page = CodePageNumber(data.codePage);
    const bool isKnown = IsSingleBytePage(page) || MultiByteEscapeDigit(page);
    return isKnown ? std::string_view(data.codePage) : std::string_view("ANSI_1252");
}

std::string_view UcsNameOf(const WritePlan& plan) {
    for (const UcsData& ucs : plan.Tables().namedUcs)
        if (EqualsIgnoreCase(ucs.name, plan.Data().ucs.name)) return plan.Data().ucs.name;
    return {};
}

}  // namespace

void BeginSection(GroupWriter& out, std::string_view name) {
    out.Word(0, "SECTION");
    out.Word(2, name);
}

void EndSection(GroupWriter& out) { out.Word(0, "ENDSEC"); }

namespace {

/// Writes one variable that the drawing has a value for.
using VariableWriter = std::function<void(GroupWriter&)>;
struct OwnVariable {
    std::string_view name;
    bool isUsual = false;  ///< The file's own goes before it.
    VariableWriter write;
};

std::vector<OwnVariable> OwnVariables(const WritePlan& plan) {
    const DrawingData& data = plan.Data();
    const auto text = [](std::string_view name, int code, std::string value, bool isUsual = false) {
        return OwnVariable{name, isUsual, [=](GroupWriter& out) {
                               WriteVariable(out, name, code, std::string_view(value));
                           }};
    };
    const auto whole = [](std::string_view name, int code, long value, bool isUsual = false) {
        return OwnVariable{name, isUsual, [=](GroupWriter& out) { WriteVariable(out, name, code, value); }};
    };
    const auto point = [](std::string_view name, const Point3& value) {
        return OwnVariable{name, false, [=](GroupWriter& out) { WriteVariable(out, name, value); }};
    };
    const bool isSame = !plan.IsRaised() && !plan.IsLowered();
    const HandleValue seed = plan.Seed();
    return {text("$ACADVER", 1, "AC" + std::to_string(plan.Release())),
            whole("$ACADMAINTVER", 70, 6, isSame),
            text("$DWGCODEPAGE", 3, std::string(CodePageOf(data)), true),
            {"$HANDSEED", false,
             [seed](GroupWriter& out) {
                 out.Word(9, "$HANDSEED");
                 out.HandleGroup(5, seed);
             }},
            text("$CLAYER", 8, data.currentLayer.empty() ? "0" : data.currentLayer),
            text("$CELTYPE", 6, "ByLayer", true),
            text("$TEXTSTYLE", 7, "Standard", true),
            text("$DIMSTYLE", 2, "Standard", true),
            text("$CMLSTYLE", 2, "Standard", true),
            whole("$PSTYLEMODE", 290, 1, true),
            whole("$EXTNAMES", 290, 1, true),
            whole("$INSUNITS", 70, data.insertUnits),
            whole("$MEASUREMENT", 70, data.measurement == 0 ? 0 : 1),
            text("$UCSNAME", 2, std::string(UcsNameOf(plan))),
            point("$UCSORG", data.ucs.origin),
            point("$UCSXDIR", data.ucs.xAxis),
            point("$UCSYDIR", data.ucs.yAxis)};
}

/// Whether a variable of the file that was read is one in the release that is written.
bool IsLegalVariable(const WritePlan& plan, std::string_view name, const std::string& groups) {
    if (plan.IsRaised()) return name.starts_with("$DIM");
    if (plan.IsLowered() && name == "$REQUIREDVERSIONS") return false;
    bool isWhole = true;
    ForEachReference(groups, [&](HandleValue handle) { isWhole = isWhole && !plan.IsGone(handle); });
    return isWhole;
}

/// The header in the order of the file that was read, and what it lacks behind that.
class HeaderWriter {
  public:
    HeaderWriter(GroupWriter& out, const WritePlan& plan)
        : mOut(out), mPlan(plan), mOwn(OwnVariables(plan)) {}

    void Write() {
        if (mPlan.Data().file)
            for (const auto& [name, groups] : mPlan.Data().file->header) WriteRead(name, groups);
        for (const OwnVariable& own : mOwn)
            if (mWritten.insert(std::string(own.name)).second) own.write(mOut);
        for (const HeaderVariable& variable : DxfHeaderVariables()) WriteValues(std::string(variable.name));
    }

  private:
    void WriteRead(const std::string& name, const std::string& groups) {
        const auto own = std::ranges::find(mOwn, name, &OwnVariable::name);
        const bool isOwn = own != mOwn.end() && !(own->isUsual && mPlan.File() != nullptr);
        if (isOwn) {
            if (mWritten.insert(name).second) own->write(mOut);
            return;
        }
        if (WriteValues(name) || !IsLegalVariable(mPlan, name, groups)) return;
        if (!mWritten.insert(name).second) return;
        mOut.Word(9, name);
        mOut.Raw(groups);
    }

    bool WriteValues(const std::string& name) {
        const auto kept = mPlan.Tables().headerVariables.find(name);
        if (kept == mPlan.Tables().headerVariables.end()) return false;
        if (!mWritten.insert(name).second) return true;
        mOut.Word(9, name);
        for (const auto& [code, value] : kept->second) mOut.Text(code, value);
        return true;
    }

    GroupWriter& mOut;
    const WritePlan& mPlan;
    std::vector<OwnVariable> mOwn;
    std::set<std::string> mWritten;
};

}  // namespace

void WriteHeader(GroupWriter& out, const WritePlan& plan) {
    BeginSection(out, "HEADER");
    HeaderWriter(out, plan).Write();
    EndSection(out);
}

namespace {

const KeptSection* FindSection(const WritePlan& plan, std::string_view name) {
    if (plan.File() == nullptr) return nullptr;
    const auto found = std::ranges::find(plan.File()->sections, name, &KeptSection::name);
    return found == plan.File()->sections.end() ? nullptr : &*found;
}

/// What class a CLASS record describes: its first text.
std::string_view ClassOf(const KeptRecord& record) {
    GroupWalk walk(record.groups);
    while (walk.Next())
        if (walk.Code() == 1) return walk.Value();
    return {};
}

// The sections that no release needs: the preview, what other programs store. Bodies in binary form don't
// stand in older releases.
void WriteFurtherSections(GroupWriter& out, const WritePlan& plan) {
    constexpr int oldestStore = 1027;
    if (plan.File() == nullptr) return;
    for (const KeptSection& section : plan.File()->sections) {
        if (section.name == "CLASSES") continue;
        if (section.name == "ACDSDATA" && plan.Release() < oldestStore) continue;
        BeginSection(out, section.name);
        out.Raw(section.head);
        for (const KeptRecord& record : section.records) {
            out.Word(0, record.name);
            out.Raw(record.groups);
        }
        EndSection(out);
    }
}

}  // namespace

void WriteClasses(GroupWriter& out, const WritePlan& plan) {
    constexpr int oldestCount = 1018;
    struct Class {
        std::string_view name, className;
    };
    constexpr auto classes = std::to_array<Class>({{"ACDBDICTIONARYWDFLT", "AcDbDictionaryWithDefault"},
                                                   {"ACDBPLACEHOLDER", "AcDbPlaceHolder"},
                                                   {"LAYOUT", "AcDbLayout"}});
    BeginSection(out, "CLASSES");
    std::set<std::string_view> known;
    if (const KeptSection* const kept = FindSection(plan, "CLASSES"); kept != nullptr) {
        for (const KeptRecord& record : kept->records) {
            known.insert(ClassOf(record));
            out.Word(0, record.name);
            out.Raw(record.groups);
        }
    }
    for (const Class& entry : classes) {
        if (known.contains(entry.name)) continue;
        out.Word(0, "CLASS");
        out.Word(1, entry.name);
        out.Word(2, entry.className);
        out.Word(3, "ObjectDBX Classes");
        out.Whole(90, 0);
        if (plan.Release() >= oldestCount) out.Whole(91, 1);
        out.Whole(280, 0);
        out.Whole(281, 0);
    }
    EndSection(out);
}

void WriteKept(GroupWriter& out, const WritePlan& plan, std::string_view kind, const std::string& groups) {
    if (!groups.empty()) out.Raw(plan.Fit(kind, groups));
}

std::string WriteDxf(const DrawingData& data, std::vector<std::string>& unkept) {
    constexpr int oldestUnicode = 1021;
    WritePlan plan(data, unkept);
    GroupWriter header, body;
    for (GroupWriter* const out : {&header, &body}) out->SetUnicode(plan.Release() >= oldestUnicode);
    WriteClasses(body, plan);
    WriteTables(body, plan);
    WriteBlocks(body, plan);
    WriteEntities(body, plan);
    WriteObjects(body, plan);
    WriteFurtherSections(body, plan);
    body.Word(0, "EOF");
    // The header comes first in the file and last in the work: it names a handle above all others.
    WriteHeader(header, plan);
    const bool isMarked = plan.File() != nullptr && plan.File()->hasByteOrderMark;
    return std::string(isMarked ? ByteOrderMark : "") + header.Take() + body.Take();
}

std::string WriteDxf(const DrawingData& data) {
    std::vector<std::string> unkept;
    return WriteDxf(data, unkept);
}

}  // namespace brenvik
