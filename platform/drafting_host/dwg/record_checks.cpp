#include "drafting_host/dwg/record_checks.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>

#include "base/letter_case.h"
#include "base/numbers.h"
#include "drafting_host/dxf/data/kept_text.h"
#include "drafting_host/dxf/data/standard_entries.h"

namespace brenvik::dwg {
namespace {

/// Whole numbers that stand for one of a few things. `part` is the subclass of a record that has two.
struct Range {
    std::string_view kind, part;
    int code, low, high;
    std::string_view what;
};
constexpr auto Ranges = std::to_array<Range>({
    {"VPORT", "", 281, 0, 6, "render mode"},
    {"VPORT", "", 79, 0, 6, "orthographic view"},
    {"VPORT", "", 78, 0, 2, "isometric plane"},
    {"VIEW", "", 281, 0, 6, "render mode"},
    {"VIEW", "", 79, 0, 6, "orthographic view"},
    {"VIEWPORT", "", 281, 0, 6, "render mode"},
    {"VIEWPORT", "", 79, 0, 6, "orthographic view"},
    {"MTEXT", "", 73, 1, 2, "kind of line spacing"},
    {"BLOCK_RECORD", "", 70, 0, 24, "unit of insertion"},
    {"BLOCK_RECORD", "", 281, 0, 1, "mark of even scaling"},
    {"LAYOUT", "AcDbPlotSettings", 72, 0, 2, "unit of paper"},
    {"LAYOUT", "AcDbPlotSettings", 73, 0, 3, "rotation of the plot"},
    {"LAYOUT", "AcDbPlotSettings", 74, 0, 5, "kind of plot"},
    {"LAYOUT", "AcDbPlotSettings", 75, 0, 32, "standard scale"},
    // Later programs plot by a visual style or a preset, too.
    {"LAYOUT", "AcDbPlotSettings", 76, 0, 5, "shading of the plot"},
    {"LAYOUT", "AcDbLayout", 76, 0, 6, "orthographic view"},
});

/// The groups of the two axes of a coordinate system.
struct AxisGroups {
    std::string_view kind;
    int x, y;
};
constexpr auto Axes = std::to_array<AxisGroups>(
    {{"VPORT", 111, 112}, {"VIEW", 111, 112}, {"VIEWPORT", 111, 112}, {"LAYOUT", 16, 17}});

std::string WhyNotWhole(std::string_view kind, std::string_view groups) {
    std::string_view part;
    GroupWalk walk(groups);
    while (walk.Next()) {
        if (walk.Code() == 100) part = WithoutBlanks(walk.Value());
        for (const Range& range : Ranges) {
            if (range.kind != kind || range.code != walk.Code()) continue;
            if (!range.part.empty() && range.part != part) continue;
            const double value = LenientNumber(walk.Value());
            if (value >= range.low && value <= range.high) continue;
            return "its " + std::string(range.what) + " is " + std::string(WithoutBlanks(walk.Value())) +
                   " where " + std::to_string(range.low) + " to " + std::to_string(range.high) +
                   " was expected";
        }
    }
    return {};
}

std::string WhyNotAxes(std::string_view kind, std::string_view groups) {
    const auto* const axes = std::ranges::find(Axes, kind, &AxisGroups::kind);
    if (axes == Axes.end()) return {};
    std::map<int, double> numbers;
    std::string_view part;
    GroupWalk walk(groups);
    while (walk.Next()) {
        if (walk.Code() == 100) part = WithoutBlanks(walk.Value());
        if (part != "AcDbPlotSettings") numbers[walk.Code()] = LenientNumber(walk.Value());
    }
    if (!numbers.contains(axes->x) || !numbers.contains(axes->y)) return {};
    const auto axis = [&](int code) { return Point3{numbers[code], numbers[code + 10], numbers[code + 20]}; };
    if (AreAxes(axis(axes->x), axis(axes->y))) return {};
    return "the axes of its coordinate system aren't at right angles or not of length 1";
}

/// The kinds whose names may begin with a star.
bool MayHaveStar(std::string_view kind, std::string_view name) {
    constexpr auto kinds = std::to_array<std::string_view>({"BLOCK_RECORD", "BLOCK", "GROUP"});
    return std::ranges::find(kinds, kind) != kinds.end() ||
           (kind == "VPORT" && EqualsIgnoreCase(name, "*Active"));
}

/// Whether a backslash opens the escape of a character that can't be decoded.
bool IsEscape(std::string_view rest) { return rest.starts_with("\\U+") || rest.starts_with("\\M+"); }

}  // namespace

bool AreAxes(const Point3& x, const Point3& y) {
    constexpr double tolerance = 1e-4;
    const auto dot = [](const Point3& a, const Point3& b) { return a.x * b.x + a.y * b.y + a.z * b.z; };
    return std::abs(dot(x, x) - 1) < tolerance && std::abs(dot(y, y) - 1) < tolerance &&
           std::abs(dot(x, y)) < tolerance;
}

std::string ImpossibleIn(std::string_view kind, std::string_view groups) {
    std::string reason = WhyNotWhole(kind, groups);
    return reason.empty() ? WhyNotAxes(kind, groups) : reason;
}

void CheckName(Reading& reading, const Holder& holder, std::string_view name, bool isDependent) {
    for (std::size_t i = 0; i < name.size(); ++i) {
        const char c = name[i];
        constexpr char erased = '\x7F';
        const bool isControl = static_cast<unsigned char>(c) < ' ' || c == erased;
        if (!isControl && ForbiddenInNames.find(c) == std::string_view::npos) continue;
        if (i == 0 && c == '*' && MayHaveStar(holder.kind, name)) continue;
        if ((c == '|' && isDependent) || (c == '\\' && IsEscape(name.substr(i)))) continue;
        const std::string shown = isControl ? "a control character" : std::string("the character ") + c;
        reading.Note(0, ShownHolder(holder) + " is named " + ShownName(name) + " with " + shown +
                            ", which a name can't have: it may be damaged");
        return;
    }
}

void CheckRecord(Reading& reading, std::string_view kind, const Object& object) {
    // What applications are called is their own affair.
    if (kind != "APPID") CheckName(reading, {kind, object.handle}, object.name, object.isDependent);
    constexpr auto notToTheEnd =
        std::to_array<std::string_view>({"UCS", "ACDBDICTIONARYWDFLT", "DIMSTYLE_CONTROL", "VX_CONTROL"});
    if (std::ranges::find(notToTheEnd, kind) != notToTheEnd.end()) return;
    if (const std::string rest = RestOf(object.streams); !rest.empty())
        reading.Note(0, ShownHolder({kind, object.handle}) + " has " + rest + ": it may be damaged");
}

void CheckAnonymous(Reading& reading, const Block& block) {
    const bool hasStar = block.name.starts_with('*') && !IsSpace(block.name);
    if (hasStar == block.isAnonymous) return;
    reading.Note(0, ShownHolder({"block " + ShownName(block.name), block.record}) +
                        (hasStar ? " isn't marked as one without a name of its own, which it is"
                                 : " is marked as one without a name of its own, which it has") +
                        ": it may be damaged");
}

}  // namespace brenvik::dwg
