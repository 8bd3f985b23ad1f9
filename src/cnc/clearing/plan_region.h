// Regions of the plan: what lies within sides, the border of a region that is defined point by point, and the
// areas that such a border parts.
#pragma once

#include <functional>
#include <span>
#include <vector>

#include "cnc/plan/plan_field.h"
#include "session/ports/section_port.h"

namespace brenvik {

/// A closed way round with its region to the left: counter-clockwise around it, clockwise around a hole in
/// it.
using PlanLoop = std::vector<PlanSide>;

/// A connected region.
struct PlanArea {
    PlanLoop outer;
    std::vector<PlanLoop> holes;
};

/// The border of the region of all points that satisfy `holds`, as loops. `sides` are all places where the
/// answer may change; they may cross and lie on each other. Places closer than `same` count as one. Throws
/// Failure if the border doesn't close.
std::vector<PlanLoop> BorderOf(std::span<const PlanSide> sides,
                               const std::function<bool(const PlanPoint&)>& holds, double same);

/// Loops as areas: each counter-clockwise one with the clockwise ones that are holes in it.
std::vector<PlanArea> AreasOf(std::vector<PlanLoop> loops);

/// All sides of the loops, one after another.
std::vector<PlanSide> SidesOf(std::span<const PlanLoop> loops);
/// The sides of the outer loop and of the holes.
std::vector<PlanSide> SidesOf(const PlanArea& area);

/// The point halfway along a side, which on a round one lies on its arc.
PlanPoint MiddleOf(const PlanSide& side);

}  // namespace brenvik
