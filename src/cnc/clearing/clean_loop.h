// Closed ways as a control can follow them.
#pragma once

#include <span>
#include <vector>

#include "cnc/clearing/plan_region.h"

namespace brenvik {

/// Whether a closed way meets itself nowhere.
bool IsSimple(std::span<const PlanSide> loop, double same);

/// What a closed way that meets itself encloses, by even and odd: each connected place with its own border.
std::vector<PlanArea> PlacesWithin(std::span<const PlanSide> loop, double same);

struct SpikeLimits {
    double shortest = 0;  ///< No side is shorter.
    double narrow = 0;    ///< How far the way out and the way back may be apart.
    double longest = 0;   ///< A longer spike stays.
};

/// The loop without its spikes: where it turns back beside itself it turns earlier.
PlanLoop WithoutSpikes(PlanLoop loop, const SpikeLimits& limits);

}  // namespace brenvik
