// What a bit leaves when it follows the inside of a closed line.
#pragma once

#include <span>
#include <vector>

#include "cnc/plan/plan_difference.h"

namespace brenvik {

/// A side moved to its left. A round one that bends to that hand more tightly than `reach` is turned inside
/// out.
PlanSide MovedLeft(const PlanSide& side, double reach);

/// Offsets a closed line to its left: arcs at convex corners, the corner itself at concave ones. A place is
/// inside the result if the line winds around it once more in its own sense than against it.
std::vector<PlanSide> MovedLeft(std::span<const PlanSide> line, double reach);

/// The same line, with its inside to the left.
std::vector<PlanSide> InsideLeft(std::span<const PlanSide> line);
std::vector<PlanSide> Reversed(std::span<const PlanSide> line);

/// The border of all places within a closed line that are further from it than `reach`, as a path whose turns
/// count: only what it runs around counter-clockwise is left. It may cross itself elsewhere.
std::vector<PlanSide> CoreOf(std::span<const PlanSide> line, double reach);

/// Whether that is wider than `width` anywhere on the sheet.
bool LeavesCore(std::span<const PlanSide> line, double reach, const PlanBox& sheet, double width);

}  // namespace brenvik
