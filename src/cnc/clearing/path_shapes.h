// The closed path of a connected place that has to be cleared: walls that run on behind a bite of something
// that is cleared anyway, and rings parted where something stands in the middle.
#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "cnc/clearing/plan_region.h"

namespace brenvik {

/// A path with fewer sides in place of `loop`: straight walls and walls about one centre are extended over
/// what lies between them. `serves` decides whether a path will do. Returns `loop` itself if none does.
PlanLoop WithoutBites(PlanLoop loop, const std::function<bool(const PlanLoop&)>& serves, double same);

/// Paths without anything standing in them that clear an area together: the ring parted beside each hole, and
/// a path over the parting that overlaps by `reach`. Null if that can't be done.
std::optional<std::vector<PlanLoop>> PartedRing(const PlanArea& area, double reach, double same);

}  // namespace brenvik
