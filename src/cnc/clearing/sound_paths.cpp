// Each path is laid over the wood of its floor and above, and looked at by itself.
#include "cnc/clearing/sound_paths.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

#include "base/skip.h"
#include "cnc/clearing/clean_loop.h"
#include "cnc/clearing/made_removals.h"
#include "cnc/plan/doubled_back.h"
#include "cnc/plan/negligible_sizes.h"
#include "cnc/plan/plan_vectors.h"
#include "cnc/proof/run_proof.h"

namespace brenvik {

namespace {

/// In millimetres: below the first a control stops, and a spike is cut off where it has come to the second.
constexpr double NoSide = 0.005, NarrowSpike = 0.01, LongestSpike = 4;

/// Down to the floor of a path; what goes right through has all of the part above its floor.
const PartSlab* SlabOf(const Removal& removal, const PartSlabs& slabs, double unit) {
    if (slabs.Slabs().empty()) return nullptr;
    if (removal.low <= SameFloor * unit) return &slabs.Slabs().front();
    return slabs.SlabFrom(removal.low);
}

bool CutsWood(const Removal& removal, const PartSlab& slab, double unit) {
    const std::array shapes{PlanShape{PlanShape::Role::Removal, removal.sides, 0}};
    return std::ranges::any_of(CompareInPlan(slab.shadow.sides, shapes, NegligibleWidth * unit),
                               [](const PlanSpot& spot) { return spot.difference == Difference::Gone; });
}

bool HasShortSide(const PlanLoop& loop, double unit) {
    return std::ranges::any_of(
        loop, [unit](const PlanSide& side) { return Length(side.to - side.from) < NoSide * unit; });
}

PlanLoop CleanLoop(const PlanLoop& loop, double unit, double same) {
    PlanLoop clean = loop;
    if (!IsSimple(loop, same)) {
        std::vector<PlanArea> places = PlacesWithin(loop, same);
        if (places.size() == 1 && places.front().holes.empty()) clean = std::move(places.front().outer);
    }
    const bool turnsBack = !DoubledBack(clean, DoubledApart * unit, ShortestDoubled * unit).empty();
    if (!turnsBack && !HasShortSide(clean, unit)) return clean;
    return WithoutSpikes(std::move(clean), {NoSide * unit, NarrowSpike * unit, LongestSpike * unit});
}

bool AreSame(const PlanLoop& one, const PlanLoop& other) {
    return std::ranges::equal(one, other, [](const PlanSide& a, const PlanSide& b) {
        return a.from.x == b.from.x && a.from.y == b.from.y && a.bulge == b.bulge;
    });
}

}  // namespace

void DropStrayPaths(RunState& run, const PartSlabs& slabs) {
    const double unit = UnitOf(run);
    const Removals removals = RemovalsOf(run);
    for (std::size_t i = 0; i < removals.paths.size(); ++i) {
        const PartSlab* const slab = SlabOf(removals.all[i], slabs, unit);
        if (removals.paths[i] == nullptr || slab == nullptr) continue;
        if (CutsWood(removals.all[i], *slab, unit)) removals.paths[i]->Delete();
    }
}

void CleanPaths(RunState& run, const PartSlabs& slabs) {
    const Removals removals = RemovalsOf(run);
    for (std::size_t i = 0; i < removals.paths.size(); ++i) {
        if (!removals.all[i].mayGo) continue;
        // A way that arithmetic doesn't close stays as it is.
        Skip([&] {
            const PlanLoop& loop = removals.all[i].sides;
            const PlanLoop clean = CleanLoop(loop, UnitOf(run), slabs.Same());
            if (clean.size() > 1 && !AreSame(loop, clean)) Redraw(run, *removals.paths[i], clean);
        });
    }
}

}  // namespace brenvik
