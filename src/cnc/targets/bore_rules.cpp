// The table of what the targets call a bore in each of the four edges.
#include "cnc/targets/bore_rules.h"

#include <array>

#include "base/invariant.h"
#include "base/number_text.h"
#include "cnc/part/lengths.h"
#include "cnc/part/run_state.h"
#include "cnc/targets/target_table.h"

namespace brenvik {

namespace {

constexpr auto AllSides = std::to_array<SideTraits>({
    {PartSide::Front, Axis::Y, false, "HF_T", "SIDEX"},
    {PartSide::Back, Axis::Y, true, "HB_T", "SIDEZ"},
    {PartSide::Left, Axis::X, false, "HL_T", "SIDEW"},
    {PartSide::Right, Axis::X, true, "HR_T", "SIDEY"},
});

using NameForm = std::string (*)(const RunState&, std::string_view head, const BoreCut&);

/// What a name begins with on the front, the back, the left and the right, and what follows.
struct BoreRules {
    Target target;
    std::array<std::string_view, 4> heads;
    NameForm form;
};

std::string AsItStands(double value) { return LayerNumberText(WithoutNoise(value), std::nullopt, "p"); }

std::string Short(const RunState& run, double value) { return ScaledNumberText(run, value, 2, 4); }

std::string HeadAlone(const RunState&, std::string_view head, const BoreCut&) { return std::string(head); }

std::string DiameterAndDepth(const RunState&, std::string_view head, const BoreCut& cut) {
    return std::string(head) + AsItStands(cut.diameter) + "_D" + AsItStands(cut.depth);
}

std::string InWords(const RunState&, std::string_view head, const BoreCut& cut) {
    return std::string(head) + AsItStands(cut.diameter) + " " + AsItStands(cut.depth);
}

std::string WholeDepth(const RunState& run, std::string_view head, const BoreCut& cut) {
    return std::string(head) + WholeNumberText(run, cut.depth);
}

std::string Height(const RunState& run, std::string_view head, const BoreCut& cut) {
    return std::string(head) + Short(run, cut.height);
}

std::string HeightUnderscored(const RunState& run, std::string_view head, const BoreCut& cut) {
    return std::string(head) + ScaledNumberText(run, cut.height, 2, 4, "_");
}

std::string HeightDiameterDepth(const RunState& run, std::string_view head, const BoreCut& cut) {
    return std::string(head) + Short(run, cut.height) + "_" + Short(run, cut.diameter) + "_" +
           Short(run, cut.depth);
}

constexpr std::array<std::string_view, 4> SideLayers{"HF_T", "HB_T", "HL_T", "HR_T"};
constexpr std::array<std::string_view, 4> SideWords{"FRONT", "BACK", "LEFT", "RIGHT"};

constexpr std::array<std::string_view, 4> Same(std::string_view head) { return {head, head, head, head}; }

constexpr auto AllBoreRules = std::to_array<BoreRules>({
    {Target::C2C, SideLayers, HeadAlone},
    {Target::ATP, SideLayers, DiameterAndDepth},
    {Target::ROV, {"SIDEB0_", "SIDED0_", "SIDEA0_", "SIDEC0_"}, HeightDiameterDepth},
    {Target::CNI, SideWords, Height},
    {Target::ASP, SideWords, Height},
    {Target::WOP4, Same("HO"), HeightUnderscored},
    {Target::WOP5, Same("H_Drill_"), HeightUnderscored},
    // The receiver takes the side from the circle's own normal.
    {Target::THERM, Same("hbore "), InWords},
    {Target::BW, {"TCHB2W2D", "TCHB2W4D", "TCHB2W1D", "TCHB2W3D"}, WholeDepth},
    {Target::Enroute, SideLayers, DiameterAndDepth},
    {Target::ABC, SideLayers, DiameterAndDepth},
    {Target::RCIM, SideLayers, DiameterAndDepth},
});

}  // namespace

std::span<const SideTraits> Sides() { return AllSides; }

std::string_view SideGroupName(const RunState& run, const SideTraits& side) {
    // By the letters that this receiver calls the edges by in the names of the layers too.
    constexpr std::array<std::string_view, 4> groupsOfROV{"SIDEB", "SIDED", "SIDEA", "SIDEC"};
    return run.target == Target::ROV ? groupsOfROV[static_cast<std::size_t>(side.side)] : std::string_view();
}

std::string BoreLayerName(const RunState& run, const SideTraits& side, const BoreCut& cut) {
    for (const BoreRules& rules : AllBoreRules) {
        if (rules.target != run.target) continue;
        return rules.form(run, rules.heads[static_cast<std::size_t>(side.side)], cut);
    }
    InvariantBroken("every target has its names for bores");
}

}  // namespace brenvik
