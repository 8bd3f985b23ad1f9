// What one operation takes away.
#pragma once

#include <vector>

#include "session/ports/section_port.h"

namespace brenvik {

/// The prism over the sides of an operation between two heights.
struct Removal {
    std::vector<PlanSide> sides;
    double low = 0, high = 0;
    /// A path of this side that stops inside, which may be taken back for a better one.
    bool mayGo = false;
};

}  // namespace brenvik
