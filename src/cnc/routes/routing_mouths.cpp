// The sections of the solid above the contour say what stands behind a side.
#include "cnc/routes/routing_mouths.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <vector>

#include "base/skip.h"
#include "cnc/drawing/drawing_walk.h"
#include "cnc/part/lengths.h"
#include "cnc/plan/bit_reach.h"
#include "cnc/plan/plan_curve_cuts.h"
#include "cnc/plan/plan_field.h"
#include "cnc/plan/plan_piece.h"
#include "cnc/plan/plan_sides.h"
#include "cnc/plan/plan_vectors.h"
#include "session/ports/platform.h"
#include "session/session.h"
#include "settings/bit_choice.h"

namespace brenvik {

namespace {

/// In millimetres: how far behind a side wood is looked for, how thin a slab of the part
/// is none, and by how much the walls of one hole differ.
constexpr double Beside = 0.03, NoSlab = 0.01, SameRound = 0.01;
/// Where along a side.
constexpr std::array<double, 3> Looks{0.1, 0.5, 0.9};

/// The sections of a part between the levels above a height.
std::vector<PlanField> WoodAbove(const SolidSections& part, double height, double thinnest) {
    std::vector<PlanField> wood;
    const std::vector<double>& levels = part.Levels();
    for (std::size_t i = 0; i + 1 < levels.size(); ++i) {
        const double low = std::max(levels[i], height);
        if (levels[i + 1] - low > thinnest) wood.emplace_back(part.At((low + levels[i + 1]) / 2));
    }
    return wood;
}

/// A side whose inside is to its left.
bool HasAirBehind(const PlanSide& side, const std::vector<PlanField>& wood, const Box3& part, double unit) {
    return std::ranges::all_of(Looks, [&](double share) {
        const PlanPoint along = AtShare(side, share + 0.01) - AtShare(side, share - 0.01);
        const double length = Length(along);
        if (length == 0) return true;
        const PlanPoint behind =
            AtShare(side, share) + PlanPoint{along.y, -along.x} * (Beside * unit / length);
        const bool onBoard =
            behind.x > part.min.x && behind.x < part.max.x && behind.y > part.min.y && behind.y < part.max.y;
        return onBoard &&
               std::ranges::none_of(wood, [&](const PlanField& field) { return field.Holds(behind); });
    });
}

struct WalledSide {
    PlanSide side;
    bool isWall = true;
};

std::vector<WalledSide> WalledSides(const AcadLWPolyline& contour, const std::vector<PlanField>& wood,
                                    const Box3& part, double unit) {
    std::vector<WalledSide> sides;
    for (const PlanSide& side : InsideLeft(SidesOf(contour)))
        sides.push_back({side, !HasAirBehind(side, wood, part, unit)});
    return sides;
}

/// Whether all walls are one round that a drill makes: the rest of a hole that a recess has bitten.
bool RunAroundDrillHole(const RunState& run, const std::vector<WalledSide>& sides, double same) {
    const auto first = std::ranges::find_if(sides, &WalledSide::isWall);
    if (first == sides.end() || first->side.bulge <= 0) return false;
    const PlanRound hole = RoundOf(first->side);
    const auto runsAlong = [&](const WalledSide& each) {
        if (!each.isWall) return true;
        if (each.side.bulge <= 0) return false;
        const PlanRound round = RoundOf(each.side);
        return std::abs(round.radius - hole.radius) < same &&
               std::hypot(round.center.x - hole.center.x, round.center.y - hole.center.y) < same;
    };
    return 2 * hole.radius <= run.part.CircleSize && std::ranges::all_of(sides, runsAlong);
}

/// Whether no side is a whole wall that is too short: one next to a mouth ends there because the other recess
/// has cut it off, and a bit runs on into that.
bool IsShortByMouthsAlone(const RunState& run, const std::vector<WalledSide>& sides) {
    for (std::size_t i = 0; i < sides.size(); ++i) {
        const PlanSide& side = sides[i].side;
        const WalledSide &before = sides[(i + sides.size() - 1) % sides.size()],
                         &behind = sides[(i + 1) % sides.size()];
        if (!sides[i].isWall || (side.bulge == 0 && !(before.isWall && behind.isWall))) continue;
        if (!BitForInsideRoute(run.part.Material, Length(side.to - side.from)).tool) return false;
    }
    return true;
}

}  // namespace

bool IsTooShortTowardsAirAlone(const RunState& run, const Box3& part, const AcadLWPolyline& contour) {
    SectionPort* const port = ThePlatform().sections;
    if (port == nullptr) return false;
    bool result = false;
    // A part whose sections can't be taken is asked about by its contour as it stands.
    Skip([&] {
        const std::unique_ptr<SolidSections> solid = port->HoldSolid(LastSolid(*run.part.drawing).ObjectID());
        if (!solid) return;
        const double unit = MillimetreIn(run.Metric());
        const std::vector<PlanField> wood = WoodAbove(*solid, contour.GetBoundingBox().min.z, NoSlab * unit);
        const std::vector<WalledSide> sides = WalledSides(contour, wood, part, unit);
        result = RunAroundDrillHole(run, sides, SameRound * unit) || IsShortByMouthsAlone(run, sides);
    });
    return result;
}

}  // namespace brenvik
