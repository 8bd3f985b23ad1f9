// The names of paths and sheets in the language of each target.
#include "cnc/targets/target_table.h"

#include <cmath>

#include "base/letter_case.h"
#include "base/number_text.h"
#include "base/numbers.h"
#include "cnc/part/run_state.h"

namespace brenvik {

namespace {

constexpr int InsideDigits = 5, ThroughDigits = 6;
/// BW's sheets are in ten-thousandths whatever the run's units are.
constexpr int SheetDigitsOfBW = 4;

/// The tool of a path as names have it.
struct ToolTexts {
    std::string number, diameter, speed, feed;
};

ToolTexts ToolOf(const RunState& run, RouteRole role) {
    if (role != RouteRole::Outline)
        return {run.part.bits.ToolNumber, LayerNumberText(run.part.bits.ToolDiameter, std::nullopt, "p"),
                run.part.bits.ToolSpeed, run.part.bits.ToolFeed};
    const MaterialTool& first = run.part.Material.tools.front();
    return {first.number, LayerNumberText(first.diameter, std::nullopt, "p"), first.spindleSpeed,
            first.feedSpeed};
}

/// The first letters of names of the first family.
std::string_view KindOf(RouteRole role, PathKind kind) {
    switch (role) {
        case RouteRole::Inside:
            return PathKindText(kind);
        case RouteRole::CirclePocket:
            return PathKindText(PathKind::PKS);
        case RouteRole::Through:
        case RouteRole::ThroughCircle:
            return PathKindText(PathKind::RT);
        case RouteRole::Outline:
        case RouteRole::ChosenOutline:
            return "OT";
    }
    return {};
}

bool IsOutline(RouteRole role) { return role == RouteRole::Outline || role == RouteRole::ChosenOutline; }
bool StopsInside(RouteRole role) { return role == RouteRole::Inside || role == RouteRole::CirclePocket; }

std::string FirstFamilyName(const RunState& run, RouteRole role, PathKind kind, double depth) {
    const ToolTexts tool = ToolOf(run, role);
    const bool depthInName = run.target == Target::C2C || run.target == Target::ATP;
    std::string name(KindOf(role, kind));
    name += "_Z";
    if (depthInName) name += LayerNumberText(depth, StopsInside(role) ? InsideDigits : ThroughDigits, "p");
    name += "_T" + tool.number + "_D" + tool.diameter + "_S" + tool.speed + "_F" + tool.feed;
    if (run.target == Target::C2C) {
        name += "_R_C" + CompensationText(run);
        if (!IsOutline(role)) name += "_" + std::to_string(run.part.RouteCount);
    } else if (run.target == Target::RCIM) {
        name += "_C" + CompensationText(run);
    }
    return name;
}

std::string RouteOfBW(const RunState& run, RouteRole role, double depth) {
    const ToolTexts tool = ToolOf(run, role);
    const std::string direction = FoldLower(run.part.Material.direction);
    std::string name = "TCHB1W0TCD$" + tool.number + "$S" + tool.speed + "F" + tool.feed;
    if (role == RouteRole::ThroughCircle)
        name += direction == "c" ? "TC2DIR1" : "TC2";
    else if (direction == "cc")
        name += "TC2";
    else if (direction == "c")
        name += "TC1";
    return name + "D" + WholeNumberText(run, depth);
}

std::string RouteOfTHERM(const RunState& run, RouteRole role, PathKind kind, double depth) {
    const std::string depthText = ScaledNumberText(run, depth, 2, 4);
    if (IsOutline(role)) return "outline " + depthText;
    const bool pocket = role == RouteRole::CirclePocket ||
                        (role == RouteRole::Inside && (kind == PathKind::PKC || kind == PathKind::PKS));
    return (pocket ? "pocket " : "dado ") + ToolOf(run, role).diameter + " " + depthText;
}

/// The scale digits of layer names: the first for a run in millimetres, the second for one in
/// inches; null for a scale setting outside 1 to 4, and the name stays without its number.
std::optional<int> ScaleDigits(const RunState& run, int metric, int imperial) {
    switch (run.part.ExportScaleSetting) {
        case 2:
        case 3:
            return metric;
        case 1:
        case 4:
            return imperial;
        default:
            return std::nullopt;
    }
}

}  // namespace

std::string RouteLayerName(const RunState& run, RouteRole role, PathKind kind, double depth) {
    switch (run.target) {
        case Target::C2C:
        case Target::ATP:
        case Target::Enroute:
        case Target::ABC:
        case Target::RCIM:
            return FirstFamilyName(run, role, kind, depth);
        case Target::THERM:
            return RouteOfTHERM(run, role, kind, depth);
        case Target::ASP:
        case Target::CNI:
            return "ROTOR" + ScaledNumberText(run, depth, 2, 4);
        case Target::ROV:
            return ToolOf(run, role).number + ScaledNumberText(run, depth, 2, 4);
        case Target::WOP4:
            return "FK" + ScaledNumberText(run, depth, 3, 4, "_") + "T" + ToolOf(run, role).number + "N";
        case Target::WOP5:
            return "V_Trim_" + ScaledNumberText(run, depth, 3, 4, "_") + "T" + ToolOf(run, role).number;
        case Target::BW:
            return RouteOfBW(run, role, depth);
    }
    return {};
}

std::string SheetLayerName(const RunState& run, double thickness) {
    switch (run.target) {
        case Target::C2C:
        case Target::ATP:
        case Target::Enroute:
        case Target::RCIM:
            return "PL_" + LayerNumberText(thickness, ThroughDigits, "p");
        case Target::ABC:
        case Target::THERM:
            return {};
        case Target::ASP:
        case Target::CNI:
        case Target::ROV:
            return "PANEL" + ScaledNumberText(run, thickness, 2, 4);
        case Target::WOP4:
            return "S_" + ScaledNumberText(run, thickness, 3, 4, "_");
        case Target::WOP5:
            return "ProcPart_" + ScaledNumberText(run, thickness, 3, 4, "_");
        case Target::BW:
            return "TCHB8W0D" + WholeNumberText(thickness, SheetDigitsOfBW);
    }
    return {};
}

std::string CompensationText(const RunState& run) {
    const std::string direction = FoldLower(run.part.Material.direction);
    if (direction == "cc") return "0";
    if (direction == "c") return "1";
    return {};
}

std::string ScaledNumberText(const RunState& run, double value, int metric, int imperial,
                             std::string_view mark) {
    const std::optional<int> digits = ScaleDigits(run, metric, imperial);
    return digits ? LayerNumberText(value, *digits, mark) : std::string();
}

std::string WholeNumberText(const RunState& run, double value) {
    const std::optional<int> digits = ScaleDigits(run, 2, 4);
    return digits ? WholeNumberText(value, *digits) : std::string();
}

std::string WholeNumberText(double value, int digits) {
    return NumberToText(std::round(RoundHalfEven(value, digits) * std::pow(10.0, digits)));
}

}  // namespace brenvik
