// Where a round bit can reach when it follows or clears a closed line: it leaves wood in necks and tight
// roundings.
#pragma once

#include <functional>
#include <span>
#include <vector>

#include "cnc/plan/plan_difference.h"

namespace brenvik {

enum class BitPath {
    Within,  ///< A pocket, a route or a cut-out.
    Around,  ///< The outline of a part.
};

/// In radians. The rest in a sharper corner is reported.
inline constexpr double SharpestCorner = 0.785;

/// A sharp corner that draws in: every bit leaves it round. The two walls up to where the bit leaves the one
/// and comes to the other, with what stays to their left.
struct RoundedCorner {
    PlanSide before, behind;  ///< They meet in the corner.
    PlanSide round;           ///< From the end of `behind` back to the begin of `before`.
};

/// What a bit doesn't get to.
struct BitRest {
    /// Its border, in no order, with the place to its left; empty if no such place is wider than a twentieth
    /// of a millimetre.
    std::vector<PlanSide> border;
    /// The corners that aren't sharper than `SharpestCorner` and whose two walls the bit comes up to. They
    /// don't lie within `border`.
    std::vector<RoundedCorner> corners;
};

/// `unit` is a millimetre. Throws Failure where the bit's way doesn't close.
BitRest RestOfBit(std::span<const PlanSide> line, BitPath path, double diameter, double unit);

/// Whether a part has the corner: whether both of its walls have wood behind them, by `isWood`.
bool IsCornerOf(const RoundedCorner& corner, const std::function<bool(const PlanPoint&)>& isWood,
                double unit);
/// Places just behind the two walls, where a part that has the corner has wood.
std::vector<PlanPoint> BehindWalls(const RoundedCorner& corner, double unit);
std::vector<PlanSide> BorderOf(const RoundedCorner& corner);  ///< Both walls and the round.

/// The diameter of the widest bit that clears `place` completely, rounds in corners aside. 0 if no bit does,
/// and for lines of very many sides; `diameter` itself if that bit leaves no more than such rounds there.
double WidestForPlace(std::span<const PlanSide> line, BitPath path, const PlanBox& place, double diameter,
                      double unit);

}  // namespace brenvik
