// Slab by slab from below: whatever is air there and in all slabs above, and not cleared yet, lies in a
// connected place of air. That place holds the path: its own border, or less of it where the rest is cleared
// anyway.
#include "cnc/clearing/rest_of_air.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <set>
#include <utility>

#include "base/angles.h"
#include "cnc/clearing/path_shapes.h"
#include "cnc/plan/doubled_back.h"
#include "cnc/plan/negligible_sizes.h"
#include "cnc/plan/plan_curve_cuts.h"
#include "cnc/plan/plan_difference.h"

namespace brenvik {

namespace {

/// In square millimetres, and as a share.
constexpr double NoArea = 0.01, NoAreaShare = 1e-4, NoFloor = 0.2;
constexpr int MostCuts = 200;

PlanLoop CirclePath(const PlanRound& round) {
    const PlanPoint left{round.center.x - round.radius, round.center.y},
        right{round.center.x + round.radius, round.center.y};
    return {{left, right, 1}, {right, left, 1}};
}

/// Around the ends of the sides; round ones may reach further.
PlanBox BoxOfEnds(const std::vector<PlanSide>& sides) {
    PlanBox box{sides.front().from.x, sides.front().from.y, sides.front().from.x, sides.front().from.y};
    for (const PlanSide& side : sides) {
        box.minX = std::min(box.minX, side.from.x);
        box.minY = std::min(box.minY, side.from.y);
        box.maxX = std::max(box.maxX, side.from.x);
        box.maxY = std::max(box.maxY, side.from.y);
    }
    return box;
}

/// Points all round a circle.
std::vector<PlanPoint> Around(const PlanRound& round, double radius) {
    constexpr int count = 32;
    std::vector<PlanPoint> points;
    for (int i = 0; i < count; ++i) {
        // Off the axes, where sides begin and end.
        const double angle = (i + 0.37) * FullTurn / count;
        points.push_back(
            {round.center.x + radius * std::cos(angle), round.center.y + radius * std::sin(angle)});
    }
    return points;
}

/// A place that is left, with points that lie in it.
struct Place {
    PlanSpot spot;
    std::vector<PlanPoint> points;
};

/// How to clear a place: the slab in which it is left, and the one down to which there is only air.
struct Task {
    const PartSlab& slab;
    const PartSlab& air;
    const PlanArea& area;
    Place place;
    bool through = false;
};

class Clearing {
  public:
    explicit Clearing(const RestOrder& order) : Clearing(order, order.slabs, false) {}
    Clearing(const RestOrder& order, const PartSlabs& slabs, bool fromBelow)
        : mOrder(order), mFromBelow(fromBelow), mSlabs(slabs) {
        for (const Removal& removal : order.removed) Take(removal);
    }

    /// All except what goes right through.
    void ClearFloors() {
        for (std::size_t i = 0; i < mOrder.removed.size(); ++i)
            if (mRemoved[i].mayGo) ReplaceByCircle(i);
        for (std::size_t number = 1; number < mSlabs.Slabs().size(); ++number) {
            const PartSlab& slab = mSlabs.Slabs()[number];
            ClearSlab(slab, slab, false);
        }
    }

    /// What is air all the way and isn't cleared all the way.
    void ClearThrough() {
        for (const PartSlab& slab : mSlabs.Slabs()) ClearSlab(slab, mSlabs.Slabs().front(), true);
    }

    const std::vector<RestCut>& Cuts() const { return mCuts; }
    /// What the cuts take away.
    std::vector<Removal> Removed() const {
        return {mRemoved.begin() + static_cast<std::ptrdiff_t>(mOrder.removed.size()), mRemoved.end()};
    }

  private:
    void Take(const Removal& removal) {
        mRemoved.push_back(removal);
        mFields.emplace_back(removal.sides);
    }

    // The rest in one slab.

    bool Covers(const Removal& removal, const PartSlab& slab) const {
        const double slack = SameFloor * mOrder.unit;
        return removal.low <= slab.low + slack && removal.high >= slab.high - slack;
    }

    /// `air` is the slab down to which all is air.
    std::vector<PlanSpot> Left(const PartSlab& slab, const PartSlab& air,
                               const PlanLoop* more = nullptr) const {
        std::vector<PlanShape> shapes{{PlanShape::Role::Stock, mSlabs.Stock().sides, -1}};
        for (std::size_t i = 0; i < mRemoved.size(); ++i)
            if (Covers(mRemoved[i], slab))
                shapes.push_back({PlanShape::Role::Removal, mRemoved[i].sides, static_cast<int>(i)});
        if (more != nullptr) shapes.push_back({PlanShape::Role::Removal, *more, -1});
        std::vector<PlanSpot> spots = CompareInPlan(air.shadow.sides, shapes, NegligibleWidth * mOrder.unit);
        std::erase_if(spots, [](const PlanSpot& spot) { return spot.difference != Difference::Standing; });
        return spots;
    }

    bool IsLeft(const PartSlab& slab, const PartSlab& air, const PlanPoint& point) const {
        if (!mSlabs.Stock().Holds(point) || air.shadow.Holds(point)) return false;
        for (std::size_t i = 0; i < mRemoved.size(); ++i)
            if (Covers(mRemoved[i], slab) && mFields[i].Holds(point)) return false;
        return true;
    }

    Place PlaceOf(const PartSlab& slab, const PartSlab& air, PlanSpot spot) const {
        Place rest{std::move(spot), {}};
        for (const PlanBox& box : rest.spot.stripes) {
            for (const double share : {0.5, 0.25, 0.75}) {
                const PlanPoint point{(box.minX + box.maxX) / 2, box.minY + share * (box.maxY - box.minY)};
                if (IsLeft(slab, air, point)) rest.points.push_back(point);
            }
        }
        return rest;
    }

    /// Air over a level floor, at least in part. Over slopes alone a bit that goes up and down has no
    /// business, nor where a bore has broken through from the side.
    bool HoldsFloor(const PartSlab& slab, const PlanArea& area) const {
        const std::vector<PlanSide> sides = SidesOf(area);
        const std::array shapes{PlanShape{PlanShape::Role::Stock, sides, -1}};
        double notOnFloor = 0;
        for (const PlanSpot& spot : CompareInPlan(slab.floor->sides, shapes, 0))
            if (spot.difference == Difference::Standing) notOnFloor += spot.area;
        const double unit = mOrder.unit;
        return SignedArea(sides) - notOnFloor > NoFloor * unit * unit;
    }

    // Paths.

    /// How much of what is left a path would clear.
    double Clears(const Task& task, const PlanLoop& path) const {
        return AreaOf(Left(task.slab, task.air)) - AreaOf(Left(task.slab, task.air, &path));
    }

    bool ClearsAll(const Task& task, const PlanLoop& path) const {
        const PlanField field(path);
        const auto within = [&](const PlanPoint& point) { return field.Holds(point); };
        if (!std::ranges::all_of(task.place.points, within) ||
            TouchesWood(task.air.shadow, path, mOrder.unit))
            return false;
        const double unit = mOrder.unit;
        return Clears(task, path) > task.place.spot.area * (1 - NoAreaShare) - NoArea * unit * unit;
    }

    /// Walls that converge towards the board's edge meet in the air, maybe far away: a path runs off by no
    /// more than a bit.
    bool StaysNear(const PlanLoop& path) const {
        const PlanBox board = BoxOfEnds(mSlabs.Stock().sides);
        return std::ranges::all_of(path, [&](const PlanSide& side) {
            return side.from.x > board.minX - mOrder.reach && side.from.x < board.maxX + mOrder.reach &&
                   side.from.y > board.minY - mOrder.reach && side.from.y < board.maxY + mOrder.reach;
        });
    }

    /// Whether a path that is there already lies within a new one of its depth.
    bool Replaces(const PlanLoop& path, double floor, const Removal& old) const {
        if (!old.mayGo || std::abs(old.low - floor) > SameFloor * mOrder.unit) return false;
        const std::array shapes{PlanShape{PlanShape::Role::Stock, mSlabs.Stock().sides, -1},
                                PlanShape{PlanShape::Role::Stock, old.sides, -1}};
        return std::ranges::none_of(
            CompareInPlan(path, shapes, NegligibleWidth * mOrder.unit),
            [](const PlanSpot& spot) { return spot.difference == Difference::Standing; });
    }

    void Add(const PartSlab& air, bool through, PlanLoop path, std::optional<PlanRound> round = {}) {
        const double floor = mFromBelow ? air.high : air.low;
        const PartSlab& first = mSlabs.Slabs().back();
        RestCut cut{std::move(path), floor, through, round};
        for (std::size_t i = 0; i < mOrder.removed.size(); ++i) {
            if (!Replaces(cut.path, floor, mRemoved[i])) continue;
            mRemoved[i].mayGo = false;
            cut.replaces.push_back(i);
        }
        if (mFromBelow)
            Take({cut.path, first.low, floor});
        else
            Take({cut.path, floor, first.high});
        if (round) {
            const double outside = round->radius + NegligibleTouch * mOrder.unit;
            cut.fromTopFace = std::ranges::any_of(
                Around(*round, outside), [&](const PlanPoint& point) { return first.shadow.Holds(point); });
        }
        mCuts.push_back(std::move(cut));
    }

    /// The circles that the area's walls run round, with how much of each is wall.
    std::vector<PlanRound> RoundWalls(const PlanArea& area) const {
        std::vector<PlanRound> found;
        for (const PlanSide& side : SidesOf(area)) {
            if (side.bulge < 1e-6) continue;
            const PlanRound round = RoundOf(side);
            const double slack = 20 * mSlabs.Same();
            const auto same = std::ranges::find_if(found, [&](const PlanRound& other) {
                return std::hypot(other.center.x - round.center.x, other.center.y - round.center.y) < slack &&
                       std::abs(other.radius - round.radius) < slack;
            });
            if (same == found.end())
                found.push_back(round);
            else
                same->sweep += round.sweep;
        }
        std::ranges::sort(found, std::greater<>(), &PlanRound::radius);
        return found;
    }

    bool StaysOnPart(const PlanRound& round) const {
        return std::ranges::all_of(Around(round, 0.9999 * round.radius),
                                   [&](const PlanPoint& point) { return mSlabs.Stock().Holds(point); });
    }

    static bool RunsWithin(const PlanRound& round, double reach, const std::vector<PlanSide>& sides) {
        const auto near = [&](const PlanPoint& point) {
            return std::hypot(point.x - round.center.x, point.y - round.center.y) < reach;
        };
        return std::ranges::all_of(
            sides, [&](const PlanSide& side) { return near(side.from) && near(MiddleOf(side)); });
    }

    /// What a path would clear if the one of this number weren't there.
    double ClearsInsteadOf(std::size_t number, const PartSlab& slab, const PlanLoop& path) {
        const double high = std::exchange(mRemoved[number].high, mRemoved[number].low);
        const double clears = AreaOf(Left(slab, slab)) - AreaOf(Left(slab, slab, &path));
        mRemoved[number].high = high;
        return clears;
    }

    /// A hole that something else has bitten is a hole all the same.
    void ReplaceByCircle(std::size_t number) {
        const std::vector<PlanSide> sides = mRemoved[number].sides;
        const PartSlab* const slab = mSlabs.SlabFrom(mRemoved[number].low);
        const double least = NoFloor * mOrder.unit * mOrder.unit;
        if (slab == nullptr || std::abs(SignedArea(sides)) < least) return;
        for (const PlanRound& round : RoundWalls({sides, {}})) {
            if (!RunsWithin(round, round.radius + NegligibleTouch * mOrder.unit, sides)) continue;
            const PlanLoop path = CirclePath(round);
            if (!StaysOnPart(round) || TouchesWood(slab->shadow, path, mOrder.unit)) continue;
            if (ClearsInsteadOf(number, *slab, path) < least) continue;
            Add(*slab, false, path, round);
            return;
        }
    }

    /// The same for a missing one.
    bool ClearByCircle(const Task& task) {
        for (const PlanRound& round : RoundWalls(task.area)) {
            const PlanLoop path = CirclePath(round);
            if (!StaysOnPart(round) || TouchesWood(task.air.shadow, path, mOrder.unit)) continue;
            const bool mostly = round.sweep > std::numbers::pi + 0.01;
            const double least = NoArea * mOrder.unit * mOrder.unit;
            if (!ClearsAll(task, path) && !(mostly && Clears(task, path) > least)) continue;
            Add(task.air, task.through, path, round);
            return true;
        }
        return false;
    }

    bool TurnsBack(const PlanLoop& loop) const {
        return !DoubledBack(loop, DoubledApart * mOrder.unit, ShortestDoubled * mOrder.unit).empty();
    }

    /// A round corner may run out beside the wall of a feature that is cleared already, with next to no wood
    /// between them: the area without what is cleared, where it has no such tip, or null.
    std::optional<PlanArea> WithoutTips(const Task& task) const {
        if (task.through || !TurnsBack(task.area.outer)) return std::nullopt;
        std::vector<PlanSide> sides = SidesOf(task.area);
        const PlanField within(sides);
        for (std::size_t i = 0; i < mRemoved.size(); ++i)
            if (Covers(mRemoved[i], task.slab))
                sides.insert(sides.end(), mRemoved[i].sides.begin(), mRemoved[i].sides.end());
        const auto holds = [&](const PlanPoint& point) {
            return within.Holds(point) && IsLeft(task.slab, task.air, point);
        };
        for (PlanArea& area : AreasOf(BorderOf(sides, holds, mSlabs.Same()))) {
            if (!PlanField(SidesOf(area)).Holds(task.place.points.front())) continue;
            if (TurnsBack(area.outer)) return std::nullopt;
            return std::move(area);
        }
        return std::nullopt;
    }

    bool ClearByPath(const Task& task) {
        if (const std::optional<PlanArea> plain = WithoutTips(task))
            return ClearArea({task.slab, task.air, *plain, task.place, task.through});
        return ClearArea(task);
    }

    bool ClearArea(const Task& task) {
        if (task.area.holes.empty()) {
            const auto serves = [&](const PlanLoop& path) {
                return StaysNear(path) && ClearsAll(task, path);
            };
            Add(task.air, task.through, WithoutBites(task.area.outer, serves, mSlabs.Same()));
            return true;
        }
        if (task.through) return false;
        const auto paths = PartedRing(task.area, mOrder.reach, mSlabs.Same());
        if (!paths || std::ranges::any_of(*paths, [&](const PlanLoop& path) {
                return TouchesWood(task.air.shadow, path, mOrder.unit);
            }))
            return false;
        for (const PlanLoop& path : *paths) Add(task.air, false, path);
        return true;
    }

    void ClearSlab(const PartSlab& slab, const PartSlab& air, bool through) {
        if (Left(slab, air).empty()) return;
        const std::vector<PlanArea> areas = AirOf(air);
        std::set<std::size_t> givenUp;
        while (static_cast<int>(mCuts.size()) < MostCuts && ClearOne(slab, air, through, areas, givenUp)) {
        }
    }

    /// The first place about which anything can be done. False when there is none.
    bool ClearOne(const PartSlab& slab, const PartSlab& air, bool through, const std::vector<PlanArea>& areas,
                  std::set<std::size_t>& givenUp) {
        for (PlanSpot& spot : Left(slab, air)) {
            Place place = PlaceOf(slab, air, std::move(spot));
            if (place.points.empty()) continue;
            const std::size_t at = AreaWith(areas, place.points.front());
            if (at == areas.size() || givenUp.contains(at)) continue;
            const Task task{slab, air, areas[at], std::move(place), through};
            if ((through || HoldsFloor(slab, areas[at])) && (ClearByCircle(task) || ClearByPath(task)))
                return true;
            givenUp.insert(at);
        }
        return false;
    }

    std::vector<PlanArea> AirOf(const PartSlab& slab) const {
        const PlanWood& stock = mSlabs.Stock();
        std::vector<PlanSide> sides = stock.sides;
        sides.insert(sides.end(), slab.shadow.sides.begin(), slab.shadow.sides.end());
        return AreasOf(BorderOf(
            sides, [&](const PlanPoint& point) { return stock.Holds(point) && !slab.shadow.Holds(point); },
            mSlabs.Same()));
    }

    static std::size_t AreaWith(const std::vector<PlanArea>& areas, const PlanPoint& point) {
        std::size_t at = 0;
        while (at < areas.size() && !PlanField(SidesOf(areas[at])).Holds(point)) ++at;
        return at;
    }

    const RestOrder mOrder;
    const bool mFromBelow;
    const PartSlabs& mSlabs;
    std::vector<Removal> mRemoved;
    std::vector<PlanField> mFields;
    std::vector<RestCut> mCuts;
};

}  // namespace

Rest RestOf(const RestOrder& order, bool first) {
    Clearing above(order);
    above.ClearFloors();
    if (!first) return {above.Cuts(), false};
    std::vector<Removal> made(order.removed.begin(), order.removed.end());
    for (Removal& removal : above.Removed()) made.push_back(std::move(removal));
    for (Removal& removal : made) removal.mayGo = false;
    const PartSlabs fromBelowSlabs(order.part, order.unit, true);
    Clearing below({order.part, order.slabs, made, order.unit, order.reach}, fromBelowSlabs, true);
    below.ClearFloors();
    const bool fromBelow = !below.Cuts().empty();
    for (Removal& removal : below.Removed()) made.push_back(std::move(removal));
    Clearing through({order.part, order.slabs, made, order.unit, order.reach});
    through.ClearThrough();
    if (through.Cuts().empty()) return {above.Cuts(), fromBelow};
    // With these the floors may have less to clear.
    std::vector<Removal> begun(order.removed.begin(), order.removed.end());
    for (Removal& removal : through.Removed()) begun.push_back(std::move(removal));
    Clearing rest({order.part, order.slabs, begun, order.unit, order.reach});
    rest.ClearFloors();
    std::vector<RestCut> cuts = through.Cuts();
    cuts.insert(cuts.end(), rest.Cuts().begin(), rest.Cuts().end());
    return {std::move(cuts), fromBelow};
}

}  // namespace brenvik
