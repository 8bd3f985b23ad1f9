// The ways of paths and outlines by themselves: what they enclose may be right to the hair, and a spike that
// encloses nothing still leads the bit astray.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "cnc/plan/plan_difference.h"
#include "cnc/proof/slab_sections.h"
#include "cnc/proof/written_side.h"

namespace brenvik {

struct WaysOfPart {
    std::span<const WrittenOperation> operations;
    std::span<const PartSection> sections;
    double unit = 1;  ///< One millimetre.
};

/// Whether the part has wood at a place, at any height that the operation goes through.
bool IsWood(const WaysOfPart& part, const WrittenOperation& operation, const PlanPoint& at);

/// Stretches that run out and come back the same way.
std::vector<std::string> FaultsOfDoubledWays(const WaysOfPart& part);

/// A path that reaches into the part's wood, by its name with its side, and in words.
struct StrayWay {
    std::string name, text;
};
/// `told` are places that have been reported as wood that is cut away or sought.
std::vector<StrayWay> FaultsOfStrayWays(const WaysOfPart& part, std::span<const PlanBox> told);

/// Whether a corner of one closed way lies off the other one.
bool CornersStray(std::span<const PlanSide> line, std::span<const PlanSide> other, double unit);

}  // namespace brenvik
