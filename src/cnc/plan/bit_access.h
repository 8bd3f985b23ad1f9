// Where a round bit gets to that follows a closed line or clears what lies within it: wood stays in necks and
// noses that are narrower than the bit, and in roundings that are tighter.
#pragma once

#include <span>
#include <vector>

#include "cnc/plan/plan_difference.h"

namespace brenvik {

enum class BitPath {
    Within,  ///< A pocket, a route or a cut-out.
    Around,  ///< The outline of a part.
};

/// In radians: what is left in a corner that is sharper counts.
inline constexpr double SharpestCorner = 0.785;

/// The border of what a bit doesn't get to, in no order, with that to its left; nothing where no such place
/// is wider than a twentieth of a millimetre. A sharp corner that draws in counts as reached although every
/// bit leaves it round, as long as it isn't sharper than `SharpestCorner` and the bit comes up to both of its
/// walls. `unit` is a millimetre. Throws Failure where the bit's way doesn't close.
std::vector<PlanSide> NotReached(std::span<const PlanSide> line, BitPath path, double diameter, double unit);

/// The diameter of the widest bit that leaves nothing in a place where one of `diameter` does; 0 where every
/// bit leaves something, and for lines of very many sides.
double WidestForPlace(std::span<const PlanSide> line, BitPath path, const PlanBox& place, double diameter,
                      double unit);

}  // namespace brenvik
