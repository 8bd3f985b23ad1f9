// Over any place of the plan the part stands in upright stretches, each of which ends at two faces. Where one
// of these is level, the place belongs to the section just beside that face's height. A stretch between two
// walls of edge bores at one height can't be: it would begin above their axes and end below.
#include "cnc/outline/reach.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include "cnc/plan/plan_difference.h"

namespace brenvik {

namespace {

constexpr double SameHeight = 1e-6;
/// What counts as noise: sides that lie on the outline miss it by less.
constexpr double NoWidth = 1e-7;
/// Wider and thicker than this a cut shows it too.
constexpr double SureWidth = 0.01, SureThickness = 0.01;
/// How near to its two levels a slab with sloped faces is looked at, as a share of its thickness.
constexpr double BesideLevel = 1e-4;

/// The heights that stand for all those between two neighbouring levels.
std::vector<double> HeightsOf(const SolidSections& part, double low, double high) {
    const bool sloped = std::ranges::any_of(
        part.Slopes(), [&](const HeightSpan& span) { return span.low < high && span.high > low; });
    if (!sloped) return {(low + high) / 2};
    const double off = BesideLevel * (high - low);
    return {low + off, high - off};
}

/// The widest place that the section has outside of the outline.
double WidthBeyond(const SolidSections& part, double height, std::span<const PlanShape> outline) {
    double widest = 0;
    for (const PlanSpot& spot : CompareInPlan(part.At(height), outline, NoWidth))
        if (spot.difference == Difference::Gone) widest = std::max(widest, spot.width);
    return widest;
}

}  // namespace

bool IsWidestAtLevels(const SolidSections& part) {
    // Each level round belongs to one sloped face, so equal numbers of both mean that there are no other
    // sloped faces.
    const std::vector<LevelRound>& rounds = part.Rounds();
    return part.Slopes().size() == rounds.size() && std::ranges::all_of(rounds, [&](const LevelRound& round) {
               return round.hollow && std::abs(round.on.z - rounds.front().on.z) < SameHeight;
           });
}

PartReach ReachBeyond(const SolidSections& part, std::span<const PlanSide> outline) {
    if (!IsWidestAtLevels(part)) return PartReach::Unclear;
    const std::array<PlanShape, 1> stock{
        PlanShape{PlanShape::Role::Stock, {outline.begin(), outline.end()}, -1, {}}};
    const std::vector<double>& levels = part.Levels();
    PartReach reach = PartReach::Within;
    for (std::size_t i = 0; i + 1 < levels.size(); ++i) {
        for (const double height : HeightsOf(part, levels[i], levels[i + 1])) {
            const double width = WidthBeyond(part, height, stock);
            if (width > SureWidth && levels[i + 1] - levels[i] > SureThickness) return PartReach::Beyond;
            if (width > 0) reach = PartReach::Unclear;
        }
    }
    return reach;
}

}  // namespace brenvik
