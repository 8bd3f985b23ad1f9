// Where a path that stops inside opens into air, as a pocket does that a notch or a deeper pocket cuts into:
// a bit that turns within such a mouth would leave it round.
#pragma once

#include <optional>
#include <span>

#include "cnc/clearing/part_slabs.h"
#include "cnc/plan/plan_difference.h"

namespace brenvik {

/// A path that stops inside, and the bit that cuts it.
struct MouthOrder {
    std::span<const PlanSide> path;
    const PlanWood& wood;  ///< All wood of the part at the path's floor and above it.
    PlanBox board;         ///< Around the part: what stays outside of it doesn't count.
    double bit = 0;
    /// How far the path is extended: far enough for the rounds at its new end not to meet those of the cut
    /// next to it, which has a bit of its own.
    double overrun = 0;
    /// The bit goes along the line and clears no more than its width.
    bool followed = false;
    double unit = 1;  ///< One millimetre.
    double same = 0;  ///< What is closer than this is one place.
};

/// The path extended into the air that it opens into, counter-clockwise, so that the bit clears the mouths
/// completely. It never touches wood. Empty where the path is good as it is, or where extending it improves
/// nothing.
std::optional<PlanLoop> RunIntoAir(const MouthOrder& order);

}  // namespace brenvik
