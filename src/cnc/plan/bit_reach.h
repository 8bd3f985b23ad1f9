// What a bit leaves standing that follows a closed line on its inside.
#pragma once

#include <span>
#include <vector>

#include "cnc/plan/plan_difference.h"

namespace brenvik {

/// The border of all places within a closed line that are further from it than `reach`, as a path whose turns
/// count: only what it runs around counter-clockwise is left. It may cross itself elsewhere.
std::vector<PlanSide> CoreOf(std::span<const PlanSide> line, double reach);

/// Whether that is wider than `width` anywhere on the sheet.
bool LeavesCore(std::span<const PlanSide> line, double reach, const PlanBox& sheet, double width);

}  // namespace brenvik
