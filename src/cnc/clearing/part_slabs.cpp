// Sections laid over each other, from the side that the bit comes from.
#include "cnc/clearing/part_slabs.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "cnc/plan/negligible_sizes.h"
#include "cnc/plan/plan_difference.h"

namespace brenvik {

namespace {

/// In millimetres: what counts as one height, as one place, and how near to a slab's end a sloped one is cut.
constexpr double SameHeight = 0.01, SamePlace = 2e-5, AtEnd = 1e-6;

bool SameSides(const std::vector<PlanSide>& a, const std::vector<PlanSide>& b) {
    return std::ranges::equal(a, b, [](const PlanSide& one, const PlanSide& other) {
        return one.from.x == other.from.x && one.from.y == other.from.y && one.to.x == other.to.x &&
               one.to.y == other.to.y && one.bulge == other.bulge;
    });
}

/// A border parted where it comes to one place twice: a hole that touches the edge of the board is a hole all
/// the same, and no notch. Without the holes.
std::vector<PlanSide> AroundTheOutside(const PlanLoop& border, double same) {
    std::vector<PlanSide> outside;
    PlanLoop open;
    const auto take = [&](std::ptrdiff_t from) {
        const PlanLoop loop(open.begin() + from, open.end());
        open.erase(open.begin() + from, open.end());
        if (SignedArea(loop) > 0) outside.insert(outside.end(), loop.begin(), loop.end());
    };
    for (const PlanSide& side : border) {
        open.push_back(side);
        const auto begin = std::ranges::find_if(open, [&](const PlanSide& other) {
            return std::hypot(other.from.x - side.to.x, other.from.y - side.to.y) < same;
        });
        if (begin != open.end()) take(begin - open.begin());
    }
    outside.insert(outside.end(), open.begin(), open.end());
    return outside;
}

}  // namespace

bool TouchesWood(const PlanWood& wood, const PlanLoop& path, double unit) {
    const std::array shapes{PlanShape{PlanShape::Role::Removal, path, 0}};
    return std::ranges::any_of(CompareInPlan(wood.sides, shapes, NegligibleTouch * unit),
                               [](const PlanSpot& spot) { return spot.difference == Difference::Gone; });
}

PartSlabs::PartSlabs(const SolidSections& part, double unit, bool fromBelow)
    : mUnit(unit), mSame(SamePlace * unit) {
    std::vector<double> levels = LevelsOf(part);
    if (fromBelow) std::ranges::reverse(levels);
    PlanWood last;
    for (std::size_t i = 0; i + 1 < levels.size(); ++i) {
        PartSlab slab;
        slab.low = std::min(levels[i], levels[i + 1]);
        slab.high = std::max(levels[i], levels[i + 1]);
        slab.sloped = std::ranges::any_of(part.Slopes(), [&](const HeightSpan& span) {
            return span.low < slab.high - AtEnd * unit && slab.low + AtEnd * unit < span.high;
        });
        if (i > 0) slab.floor = std::move(last);
        const double end = AtEnd * unit, middle = (slab.low + slab.high) / 2;
        const double first = fromBelow ? slab.high - end : slab.low + end;
        const double far = fromBelow ? slab.low + end : slab.high - end;
        slab.shadow = WoodOf(part.At(middle));
        last = slab.shadow;
        if (slab.sloped) {
            last = WoodOf(part.At(far));
            slab.shadow = Both(Both(slab.shadow, last), WoodOf(part.At(first)));
        }
        mSlabs.push_back(std::move(slab));
    }
    for (std::size_t i = mSlabs.size(); i-- > 1;)
        mSlabs[i - 1].shadow = Both(mSlabs[i].shadow, mSlabs[i - 1].shadow);
    if (mSlabs.empty()) return;
    std::vector<PlanSide> border;
    const std::vector<PlanLoop> loops = BorderOf(
        mSlabs.front().shadow.sides, [this](const PlanPoint& p) { return mSlabs.front().shadow.Holds(p); },
        mSame);
    for (const PlanArea& area : AreasOf(loops)) {
        const std::vector<PlanSide> outside = AroundTheOutside(area.outer, mSame);
        border.insert(border.end(), outside.begin(), outside.end());
    }
    mStock = WoodOf(std::move(border));
}

const PartSlab* PartSlabs::SlabFrom(double floor) const {
    const auto slab = std::ranges::find_if(
        mSlabs, [&](const PartSlab& each) { return std::abs(each.low - floor) < SameFloor * mUnit; });
    return slab == mSlabs.end() ? nullptr : &*slab;
}

std::vector<double> PartSlabs::LevelsOf(const SolidSections& part) const {
    std::vector<double> levels;
    for (const double level : part.Levels())
        if (levels.empty() || level - levels.back() > SameHeight * mUnit) levels.push_back(level);
    return levels;
}

PlanWood PartSlabs::WoodOf(std::vector<PlanSide> sides) const {
    PlanWood wood{std::move(sides), nullptr};
    wood.field = std::make_shared<PlanField>(wood.sides);
    return wood;
}

PlanWood PartSlabs::Both(const PlanWood& one, const PlanWood& other) const {
    if (SameSides(one.sides, other.sides)) return one;
    std::vector<PlanSide> sides = one.sides;
    sides.insert(sides.end(), other.sides.begin(), other.sides.end());
    const std::vector<PlanLoop> loops = BorderOf(
        sides, [&](const PlanPoint& point) { return one.Holds(point) || other.Holds(point); }, mSame);
    return WoodOf(SidesOf(loops));
}

}  // namespace brenvik
