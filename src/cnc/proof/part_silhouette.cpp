// The sections one above the other, each loop of them run around counter-clockwise, so that those of windows
// fill them.
#include "cnc/proof/part_silhouette.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "cnc/plan/bit_reach.h"
#include "cnc/plan/plan_vectors.h"

namespace brenvik {

namespace {

/// In millimetres: ends nearer than this are one, and what is less deep is nothing.
constexpr double SamePlace = 1e-3, NoDepth = 0.01;
/// Where a slab is cut, as shares of its depth: where faces slope the widest place is near one of its ends.
constexpr std::array Cuts{0.01, 0.5, 0.99};

/// One loop after another, each begun with the last of the sides that are left. What doesn't close is left
/// out.
void AddLoops(std::vector<PlanSide> sides, double same, std::vector<PlanSide>& all) {
    while (!sides.empty()) {
        std::vector<PlanSide> loop{sides.back()};
        sides.pop_back();
        while (Length(loop.back().to - loop.front().from) > same) {
            const PlanPoint at = loop.back().to;
            const auto next = std::ranges::find_if(sides, [&](const PlanSide& side) {
                return Length(side.from - at) < same || Length(side.to - at) < same;
            });
            if (next == sides.end()) break;
            const bool along = Length(next->from - at) < same;
            loop.push_back(along ? *next : PlanSide{next->to, next->from, -next->bulge});
            sides.erase(next);
        }
        if (Length(loop.back().to - loop.front().from) > same) continue;
        const std::vector<PlanSide> around = InsideLeft(loop);
        all.insert(all.end(), around.begin(), around.end());
    }
}

bool AreSame(const std::vector<PlanSide>& a, const std::vector<PlanSide>& b) {
    return std::ranges::equal(a, b, [](const PlanSide& one, const PlanSide& other) {
        return Length(one.from - other.from) == 0 && Length(one.to - other.to) == 0 &&
               one.bulge == other.bulge;
    });
}

}  // namespace

std::vector<PlanSide> SilhouetteOf(const SolidSections& part, double unit) {
    std::vector<PlanSide> all, last;
    const std::vector<double>& levels = part.Levels();
    for (std::size_t i = 0; i + 1 < levels.size(); ++i) {
        if (levels[i + 1] - levels[i] <= NoDepth * unit) continue;
        for (const double share : Cuts) {
            std::vector<PlanSide> sides = part.At(levels[i] + share * (levels[i + 1] - levels[i]));
            if (AreSame(sides, last)) continue;
            last = sides;
            AddLoops(std::move(sides), SamePlace * unit, all);
        }
    }
    return all;
}

}  // namespace brenvik
