// Faults of an adjustment file that don't stop an export: amounts that aren't numbers count as 0, and unknown
// criteria let every part through.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

namespace brenvik {

struct AdjustmentFault {
    std::size_t line = 0;  ///< From 1.
    std::string text;      ///< What stands there, what was expected, and what becomes of it.
};

/// The faults of a file in the order of its lines. Remarks, which begin with "#", and blank lines are none.
/// The session's `ColumnRelation` has to be filled.
std::vector<AdjustmentFault> AdjustmentFaults(std::span<const std::string> lines);

}  // namespace brenvik
