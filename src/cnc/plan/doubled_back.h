// Stretches of a closed line that run back beside themselves, with next to nothing between the way out and
// the way back: a slit that no bit follows.
#pragma once

#include <span>
#include <vector>

#include "session/ports/section_port.h"

namespace brenvik {

struct DoubledStretch {
    PlanPoint from, to;
    /// Between the two ways, at most.
    double apart = 0;
    /// Places in the middle between them.
    std::vector<PlanPoint> between;
};

/// Those whose ways are no further apart than `apart`, longest first. `shortest` is how long one has to be.
std::vector<DoubledStretch> DoubledBack(std::span<const PlanSide> line, double apart, double shortest);

}  // namespace brenvik
