// Places and ways along a single side.
#pragma once

#include "session/ports/section_port.h"

namespace brenvik {

/// Whether it arches away from its chord by a length that counts, however long it is.
bool IsRound(const PlanSide& side);

/// Along a round one.
double LengthOf(const PlanSide& side);

/// The same side, run the other way.
PlanSide Reversed(const PlanSide& side);

/// In radians, counter-clockwise: between half a turn either way, and from 0 to a whole turn.
double AngleBetween(const PlanPoint& a, const PlanPoint& b);
double TurnTo(const PlanPoint& a, const PlanPoint& b);

/// The point of a side that is next to another one.
PlanPoint NearestOn(const PlanSide& side, const PlanPoint& point);

/// The way of a side at one of its ends, one long.
PlanPoint WayAt(const PlanSide& side, bool atEnd);

}  // namespace brenvik
