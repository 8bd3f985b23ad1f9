// Side by side and height by height.
#include "cnc/proof/twin_operations.h"

#include "cnc/plan/negligible_sizes.h"

#include <algorithm>
#include <cmath>

namespace brenvik {

namespace {

/// In millimetres: places nearer than this are equal. Bores whose width and depth differ by no more than the
/// negligible width are one bore.
constexpr double SamePlace = 0.01;
constexpr double SameBulge = 1e-4;
/// Of the cosine of the angle between two bores.
constexpr double SameWay = 1e-6;

/// The corners of a closed path needn't begin at the same one.
bool SameSides(const std::vector<PlanSide>& a, const std::vector<PlanSide>& b, double unit) {
    if (a.size() != b.size()) return false;
    const auto same = [unit](const PlanPoint& one, const PlanPoint& other) {
        return std::hypot(one.x - other.x, one.y - other.y) < SamePlace * unit;
    };
    return std::ranges::all_of(a, [&](const PlanSide& side) {
        return std::ranges::any_of(b, [&](const PlanSide& other) {
            const bool along = same(side.from, other.from) && same(side.to, other.to) &&
                               std::abs(side.bulge - other.bulge) < SameBulge;
            const bool against = same(side.from, other.to) && same(side.to, other.from) &&
                                 std::abs(side.bulge + other.bulge) < SameBulge;
            return along || against;
        });
    });
}

bool AreUprightOfOneSide(const WrittenOperation& a, const WrittenOperation& b) {
    const auto isUpright = [](const WrittenOperation& each) {
        return !each.bore && each.kind != OperationKind::Outline;
    };
    return isUpright(a) && isUpright(b) && a.secondSide == b.secondSide;
}

/// Of two bores in one line the wider one is the other's counterbore if it is less deep. One beside the line
/// is held as far as its wall lies within the other's.
bool HoldsBore(const WrittenOperation& outer, const WrittenOperation& inner, double unit) {
    const LevelRound &a = *outer.bore, &b = *inner.bore;
    const double slack = NegligibleWidth * unit;
    const double dx = b.on.x - a.on.x, dy = b.on.y - a.on.y;
    const double before = dx * a.along.x + dy * a.along.y, beside = dx * a.along.y - dy * a.along.x;
    const bool sameWay = a.along.x * b.along.x + a.along.y * b.along.y > 1 - SameWay;
    return sameWay && before > -slack && before + inner.boreDepth < outer.boreDepth + slack &&
           std::hypot(beside, b.on.z - a.on.z) + b.radius < a.radius + slack;
}

}  // namespace

bool AreTwins(const WrittenOperation& a, const WrittenOperation& b, const HeightSpan& part, double unit) {
    if (a.bore.has_value() != b.bore.has_value()) return false;
    // Both sides have the outline, and edge bores that go right through.
    if (a.secondSide != b.secondSide && (a.bore || a.kind == OperationKind::Outline)) return false;
    // Of two from one side the deeper one holds the other.
    if (AreUprightOfOneSide(a, b)) return SameSides(a.sides, b.sides, unit);
    if (a.bore) return HoldsBore(a, b, unit) || HoldsBore(b, a, unit);
    const auto near = [unit](double one, double other) { return std::abs(one - other) < SamePlace * unit; };
    return near(std::max(a.low, part.low), std::max(b.low, part.low)) &&
           near(std::min(a.high, part.high), std::min(b.high, part.high)) &&
           SameSides(a.sides, b.sides, unit);
}

}  // namespace brenvik
