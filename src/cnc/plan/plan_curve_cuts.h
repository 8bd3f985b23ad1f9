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

/// Where the endless lines or circles of two sides meet; one point where they touch.
std::vector<PlanPoint> MeetingsOf(const PlanSide& a, const PlanSide& b, double same);

/// All sides in stretches that meet at their ends alone, or lie on each other all the way. What is closer
/// than `same` is one place.
std::vector<PlanSide> CutWhereTheyMeet(std::span<const PlanSide> sides, double same);

/// The same with the number of the side that each stretch is of.
struct NumberedStretch {
    PlanSide side;
    std::size_t of = 0;
};
std::vector<NumberedStretch> NumberedStretches(std::span<const PlanSide> sides, double same);

}  // namespace brenvik
