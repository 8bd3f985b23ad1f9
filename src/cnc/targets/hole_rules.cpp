// The table of what the targets call a vertical hole, and the few forms that the names have.
#include "cnc/targets/hole_rules.h"

#include <array>

#include "base/invariant.h"
#include "base/number_text.h"
#include "base/numbers.h"
#include "cnc/part/run_state.h"
#include "cnc/targets/target_table.h"

namespace brenvik {

namespace {

constexpr int NameDecimals = 6;
constexpr int LayDecimals = 6;
constexpr int FullHeightDecimals = 5;

using NameForm = std::string (*)(const RunState&, const HoleCut&);

enum class ThroughTest {
    FloorBelow,  ///< The floor is on the underside.
    FullHeight,  ///< The depth is the height of the part.
};

enum class Spoil { None, Through, Always };

struct HoleWay {
    ThroughTest through;
    Spoil spoil;
    NameForm name;
};

struct HoleRules {
    Target target;
    int metricDigits, imperialDigits;  ///< Of the depth.
    bool keepsThickness;
    HoleWay topFace, recess;
};

std::string DiameterText(const HoleCut& cut) { return LayerNumberText(cut.diameter, NameDecimals, "p"); }
std::string DrilledText(const HoleCut& cut) { return LayerNumberText(cut.drilled, NameDecimals, "p"); }

std::string DepthAndDiameter(const RunState&, const HoleCut& cut) {
    return "VD_Z" + DrilledText(cut) + "_T_D" + DiameterText(cut);
}

std::string DiameterAndDepth(const RunState&, const HoleCut& cut) {
    return "VD_T" + DiameterText(cut) + "_D" + DrilledText(cut);
}

// The depth is absent on purpose: the receiver takes it from the circle's thickness.
std::string DiameterAlone(const RunState&, const HoleCut& cut) { return "VD_Z_T_D" + DiameterText(cut); }

// The second side is named by the height of the circle, which is on the top plane by now.
std::string ThermDrill(const RunState& run, const HoleCut& cut) {
    const double value = run.FirstPass() ? cut.depth : cut.circleZ;
    const std::string zero = value < 1 ? "0" : "";
    return "drill z" + zero + ScaledNumberText(run, value, 2, 4);
}

std::string NoName(const RunState&, const HoleCut&) { return "0"; }

std::string Vertical(const RunState& run, const HoleCut& cut) {
    return "VERTICAL" + ScaledNumberText(run, cut.drilled, 2, 4);
}

std::string Vert(const RunState& run, const HoleCut& cut) {
    return "VERT" + ScaledNumberText(run, cut.drilled, 2, 4);
}

std::string Wop4Recess(const RunState& run, const HoleCut& cut) {
    return "ZD" + ScaledNumberText(run, cut.drilled, 3, 4, "_");
}

std::string Wop4TopFace(const RunState& run, const HoleCut& cut) {
    return cut.through ? Wop4Recess(run, cut) : "ZF" + ScaledNumberText(run, cut.depth, 3, 4, "_");
}

std::string Wop5Recess(const RunState&, const HoleCut&) { return "V_DrillSFS"; }

std::string Wop5TopFace(const RunState& run, const HoleCut& cut) {
    return cut.through ? Wop5Recess(run, cut) : "V_DrillSF_" + ScaledNumberText(run, cut.depth, 3, 4, "_");
}

std::string WholeDepth(const RunState& run, const HoleCut& cut) {
    return "TCHB2W0D" + WholeNumberText(run, cut.drilled);
}

using enum ThroughTest;

constexpr HoleWay WithSpoil(NameForm name) { return {FloorBelow, Spoil::Through, name}; }
constexpr HoleWay WithoutSpoil(NameForm name) { return {FloorBelow, Spoil::None, name}; }

constexpr auto AllHoleRules = std::to_array<HoleRules>({
    {Target::C2C, 6, 6, true, WithSpoil(DepthAndDiameter), WithSpoil(DepthAndDiameter)},
    {Target::ATP, 6, 6, true, WithSpoil(DepthAndDiameter), WithSpoil(DiameterAndDepth)},
    {Target::ROV, 2, 4, false, WithSpoil(Vert), WithSpoil(Vert)},
    {Target::CNI, 6, 6, false, WithSpoil(Vertical), WithSpoil(Vertical)},
    {Target::ASP, 5, 5, true, WithoutSpoil(NoName), WithoutSpoil(NoName)},
    // These two judge a hole from the top by its depth and one in a recess by its floor, and the drilled
    // depth from the top has the spoil in either case: the name of a blind hole doesn't show it.
    {Target::WOP4, 5, 5, false, {FullHeight, Spoil::Always, Wop4TopFace}, WithSpoil(Wop4Recess)},
    {Target::WOP5, 5, 5, false, {FullHeight, Spoil::Always, Wop5TopFace}, WithSpoil(Wop5Recess)},
    {Target::THERM, 6, 6, true, WithoutSpoil(ThermDrill), WithoutSpoil(ThermDrill)},
    {Target::BW,
     5,
     5,
     false,
     {FullHeight, Spoil::Through, WholeDepth},
     {FullHeight, Spoil::Through, WholeDepth}},
    {Target::Enroute, 6, 6, true, WithoutSpoil(DiameterAlone), WithoutSpoil(DiameterAlone)},
    {Target::ABC, 6, 6, true, WithSpoil(DiameterAlone), WithSpoil(DiameterAlone)},
    {Target::RCIM, 6, 6, true, WithoutSpoil(DiameterAlone), WithoutSpoil(DiameterAlone)},
});

const HoleRules& RulesOf(Target target) {
    for (const HoleRules& rules : AllHoleRules)
        if (rules.target == target) return rules;
    InvariantBroken("every target has its rules for holes");
}

const HoleWay& WayOf(const HoleRules& rules, HoleStart start) {
    switch (start) {
        case HoleStart::TopFace:
            return rules.topFace;
        case HoleStart::Recess:
            return rules.recess;
    }
    InvariantBroken("a hole starts on the top face or in a recess");
}

bool IsThrough(ThroughTest test, double depth, const HoleHeights& heights) {
    switch (test) {
        case FloorBelow:
            return RoundHalfEven(heights.floor, LayDecimals) == 0;
        case FullHeight:
            // A thickness of six decimals reaches the height of five only when both are rounded alike.
            return RoundHalfEven(depth, FullHeightDecimals) ==
                   RoundHalfEven(heights.fullHeight, FullHeightDecimals);
    }
    InvariantBroken("a hole is through by its floor or by its depth");
}

double SpoilOf(Spoil rule, bool through, double spoil) {
    switch (rule) {
        case Spoil::None:
            return 0;
        case Spoil::Through:
            return through ? spoil : 0;
        case Spoil::Always:
            return spoil;
    }
    InvariantBroken("spoil is never, always or for through holes");
}

}  // namespace

HoleCut CutOf(const RunState& run, HoleStart start, const HoleHeights& heights, double spoil) {
    const HoleRules& rules = RulesOf(run.target);
    const HoleWay& way = WayOf(rules, start);
    // From a recess, depths are six decimals for every target.
    const int fromTop = run.Metric() ? rules.metricDigits : rules.imperialDigits;
    const int digits = start == HoleStart::Recess ? LayDecimals : fromTop;
    HoleCut cut;
    cut.start = start;
    // Differences of rounded values bring digits of their own.
    cut.depth = RoundHalfEven(RoundHalfEven(heights.top, digits) - RoundHalfEven(heights.floor, digits), 9);
    cut.through = IsThrough(way.through, cut.depth, heights);
    cut.drilled = RoundHalfEven(cut.depth + SpoilOf(way.spoil, cut.through, spoil), 9);
    return cut;
}

std::string HoleLayerName(const RunState& run, const HoleCut& cut) {
    return WayOf(RulesOf(run.target), cut.start).name(run, cut);
}

bool HolesKeepThickness(Target target) { return RulesOf(target).keepsThickness; }

double HoleThickness(const RunState& run, const HoleCut& cut) {
    return RulesOf(run.target).keepsThickness ? -cut.drilled : 0;
}

}  // namespace brenvik
