// Sides of the plan cut where they meet.
#pragma once

#include <span>
#include <vector>

#include "session/ports/section_port.h"

namespace brenvik {

/// The place of a side at a share of its length.
PlanPoint AtShare(const PlanSide& side, double share);
/// The stretch of a side between two shares of its length.
PlanSide Stretch(const PlanSide& side, double from, double to);

/// All sides in stretches that meet at their ends alone, or lie on each other all the way. What is closer
/// than `same` is one place.
std::vector<PlanSide> CutWhereTheyMeet(std::span<const PlanSide> sides, double same);

struct NumberedStretch {
    PlanSide side;
    std::size_t of = 0;  ///< The index of the side that it is a stretch of.
};
/// The stretches that CutWhereTheyMeet gives, each with the side that it comes from.
std::vector<NumberedStretch> NumberedStretches(std::span<const PlanSide> sides, double same);

}  // namespace brenvik
