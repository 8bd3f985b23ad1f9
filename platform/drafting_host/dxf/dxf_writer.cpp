// The file as a whole: the order of sections, the header, the classes.
#include "drafting_host/dxf/dxf_writer.h"

#include <array>

#include "base/letter_case.h"
#include "drafting_host/dxf/code_pages.h"
#include "drafting_host/dxf/dxf_text.h"
#include "drafting_host/dxf/header_variables.h"
#include "drafting_host/dxf/writing.h"

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
    for (const UcsData& ucs : plan.Tables().namedUcs) {
        if (EqualsIgnoreCase(ucs.name, plan.Data().ucs.name)) return plan.Data().ucs.name;
    }
    return {};
}

}  // namespace

void BeginSection(GroupWriter& out, std::string_view name) {
    out.Word(0, "SECTION");
    out.Word(2, name);
}

void EndSection(GroupWriter& out) { out.Word(0, "ENDSEC"); }

void WriteHeader(GroupWriter& out, const WritePlan& plan) {
    const DrawingData& data = plan.Data();
    BeginSection(out, "HEADER");
    WriteVariable(out, "$ACADVER", 1, "AC1015");
    WriteVariable(out, "$ACADMAINTVER", 70, 6);
    WriteVariable(out, "$DWGCODEPAGE", 3, CodePageOf(data));
    out.Word(9, "$HANDSEED");
    out.HandleGroup(5, plan.Seed());
    WriteVariable(out, "$CLAYER", 8, data.currentLayer.empty() ? "0" : data.currentLayer);
    WriteVariable(out, "$CELTYPE", 6, "ByLayer");
    WriteVariable(out, "$TEXTSTYLE", 7, "Standard");
    WriteVariable(out, "$DIMSTYLE", 2, "Standard");
    WriteVariable(out, "$CMLSTYLE", 2, "Standard");
    WriteVariable(out, "$PSTYLEMODE", 290, 1);
    WriteVariable(out, "$EXTNAMES", 290, 1);
    WriteVariable(out, "$INSUNITS", 70, data.insertUnits);
    WriteVariable(out, "$MEASUREMENT", 70, data.measurement == 0 ? 0 : 1);
    WriteVariable(out, "$UCSNAME", 2, UcsNameOf(plan));
    WriteVariable(out, "$UCSORG", data.ucs.origin);
    WriteVariable(out, "$UCSXDIR", data.ucs.xAxis);
    WriteVariable(out, "$UCSYDIR", data.ucs.yAxis);
    for (const HeaderVariable& variable : DxfHeaderVariables()) {
        const auto kept = plan.Tables().headerVariables.find(std::string(variable.name));
        if (kept == plan.Tables().headerVariables.end()) continue;
        out.Word(9, variable.name);
        for (const auto& [code, value] : kept->second) out.Text(code, value);
    }
    EndSection(out);
}

void WriteClasses(GroupWriter& out) {
    struct Class {
        std::string_view name, className;
    };
    constexpr auto classes = std::to_array<Class>({{"ACDBDICTIONARYWDFLT", "AcDbDictionaryWithDefault"},
                                                   {"ACDBPLACEHOLDER", "AcDbPlaceHolder"},
                                                   {"LAYOUT", "AcDbLayout"}});
    BeginSection(out, "CLASSES");
    for (const Class& entry : classes) {
        out.Word(0, "CLASS");
        out.Word(1, entry.name);
        out.Word(2, entry.className);
        out.Word(3, "ObjectDBX Classes");
        out.Whole(90, 0);
        out.Whole(280, 0);
        out.Whole(281, 0);
    }
    EndSection(out);
}

std::string WriteDxf(const DrawingData& data) {
    WritePlan plan(data);
    GroupWriter body;
    WriteClasses(body);
    WriteTables(body, plan);
    WriteBlocks(body, plan);
    WriteEntities(body, plan);
    WriteObjects(body, plan);
    body.Word(0, "EOF");
    // The header comes first in the file and last in the work: it names a handle above all others.
    GroupWriter header;
    WriteHeader(header, plan);
    return header.Take() + body.Take();
}

}  // namespace brenvik
